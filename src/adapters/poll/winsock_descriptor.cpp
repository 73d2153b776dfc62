#include <winsock2.h>

#include "adapters/poll/descriptor.h"
#include "adapters/poll/winsock_errors.h"
#include "automation/runtime_error.h"

namespace mirelo::poll {

Descriptor Descriptor::Opened(int result) {
  if (result >= 0) return Descriptor(result);
  const int error = ::WSAGetLastError();
  if (error == WSAEMFILE) throw RuntimeError(67, "Too many files");
  throw RuntimeError(440, WinsockText(error));
}

void Descriptor::Close() {
  if (number_ >= 0) ::closesocket(static_cast<SOCKET>(std::exchange(number_, -1)));
}

}  // namespace mirelo::poll
