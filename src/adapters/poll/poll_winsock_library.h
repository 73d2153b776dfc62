#pragma once

#include <cstdint>
#include <memory>

#include "adapters/poll/name_resolver.h"
#include "host/message_loop.h"
#include "host/winsock_library.h"

namespace mirelo::poll {

// The socket library over non-blocking TCP and a message loop, which must outlive the library and its
// connections. Connections may outlive the library; whichever goes last waits for a host name that is being
// looked up.
class PollWinsockLibrary final : public host::WinsockLibrary {
 public:
  // `lookup` finds the address of a host name, on a thread of the library.
  explicit PollWinsockLibrary(host::MessageLoop& loop, NameResolver::Lookup lookup = NameResolver::AskSystem);

  std::unique_ptr<host::SocketAddress> CreateAddress(std::int32_t family) override;
  std::unique_ptr<host::SocketProtocol> FindProtocol(std::int32_t family, std::int32_t type,
                                                     std::int32_t protocol) override;
  std::shared_ptr<host::SocketConnection> CreateConnection(const host::SocketProtocol& protocol) override;

 private:
  host::MessageLoop& loop_;
  std::shared_ptr<NameResolver> resolver_;
};

}  // namespace mirelo::poll
