#include <winsock2.h>

#include "adapters/poll/descriptor.h"
#include "adapters/poll/winsock_errors.h"
#include "automation/runtime_error.h"

namespace mirelo::poll {

Descriptor::Descriptor(int opened) : number_(opened) {
  if (opened >= 0) return;
  const int error = ::WSAGetLastError();
  if (error == WSAEMFILE) throw RuntimeError(67, "Too many files");
  throw RuntimeError(440, WinsockText(error));
}

void Descriptor::Close() {
  if (number_ >= 0) ::closesocket(static_cast<SOCKET>(std::exchange(number_, -1)));
}

}  // namespace mirelo::poll
