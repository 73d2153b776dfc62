#include "adapters/poll/poll_winsock_library.h"

#include <utility>

#include "adapters/poll/tcp_address.h"
#include "adapters/poll/tcp_connection.h"
#include "automation/runtime_error.h"

namespace mirelo::poll {

PollWinsockLibrary::PollWinsockLibrary(host::MessageLoop& loop, NameResolver::Lookup lookup)
    : loop_(loop), resolver_(std::make_shared<NameResolver>(loop, std::move(lookup))) {}

std::unique_ptr<host::SocketAddress> PollWinsockLibrary::CreateAddress(std::int32_t family) {
  if (family != kInet) throw Errors::InvalidProcedureCall();
  return std::make_unique<TcpAddress>();
}

std::unique_ptr<host::SocketProtocol> PollWinsockLibrary::FindProtocol(std::int32_t family, std::int32_t type,
                                                                       std::int32_t protocol) {
  if (family != kInet || type != kStream || protocol != kTcp) throw Errors::InvalidProcedureCall();
  return std::make_unique<host::SocketProtocol>();
}

// There is only the one protocol to tell apart.
std::shared_ptr<host::SocketConnection> PollWinsockLibrary::CreateConnection(const host::SocketProtocol&) {
  return TcpConnection::Create(loop_, resolver_);
}

}  // namespace mirelo::poll
