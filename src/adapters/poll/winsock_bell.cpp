#include <winsock2.h>

#include "adapters/poll/bell.h"
#include "adapters/poll/winsock_errors.h"

namespace mirelo::poll {

// A socket that sends to itself, and takes from nobody else. Each datagram is a ring.
Bell Bell::Open() {
  StartWinsock();
  Bell opened;
  opened.descriptor_ = Descriptor::Opened(static_cast<int>(
      ::WSASocketW(AF_INET, SOCK_DGRAM, IPPROTO_UDP, nullptr, 0, WSA_FLAG_NO_HANDLE_INHERIT)));
  const SOCKET socket = static_cast<SOCKET>(opened.Number());
  u_long never_block = 1;
  ::ioctlsocket(socket, static_cast<long>(FIONBIO), &never_block);
  sockaddr_in own = {};
  own.sin_family = AF_INET;
  own.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
  int size = sizeof own;
  auto* const address = reinterpret_cast<sockaddr*>(&own);
  const bool is_connected = ::bind(socket, address, size) == 0 &&
                            ::getsockname(socket, address, &size) == 0 &&
                            ::connect(socket, address, size) == 0;
  if (!is_connected) opened.descriptor_ = Descriptor::Opened(-1);  // raises what the last call has left
  return opened;
}

void Bell::Ring() { ::send(static_cast<SOCKET>(Number()), "!", 1, 0); }

bool Bell::Take() {
  char one = 0;
  return ::recv(static_cast<SOCKET>(Number()), &one, 1, 0) == 1;
}

}  // namespace mirelo::poll
