#include <winsock2.h>

#include "adapters/windows/socket_messages.h"

namespace mirelo::windows {

namespace {

// As poll/polled.h has them, whose names are taken by the header above.
constexpr short kToRead = 0x01;
constexpr short kToWrite = 0x04;

}  // namespace

void AskForMessages(int socket, HWND__* window, unsigned message, short events) {
  long wanted = 0;
  if ((events & kToRead) != 0) wanted |= FD_READ | FD_ACCEPT | FD_CLOSE;
  if ((events & kToWrite) != 0) wanted |= FD_WRITE | FD_CONNECT | FD_CLOSE;
  ::WSAAsyncSelect(static_cast<SOCKET>(socket), window, wanted == 0 ? 0 : message, wanted);
}

}  // namespace mirelo::windows
