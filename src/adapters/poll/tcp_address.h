#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "adapters/poll/ipv4.h"
#include "host/winsock_library.h"

namespace mirelo::poll {

// Where a connection goes: an IPv4 address or a name yet to be looked up, and a port.
class TcpAddress final : public host::SocketAddress {
 public:
  // Blanks are part of no address. Names consist of labels of letters, digits, hyphens and underscores; one
  // of digits and dots only must be a dotted address. A text that is refused leaves the address as it was.
  void SetText(const std::string& text) override;

  const std::string& Text() const { return text_; }  // empty until SetText
  const std::string& Host() const { return host_; }
  std::optional<Ipv4> Ip() const { return ip_; }  // nothing for a name
  std::uint16_t Port() const { return port_; }

 private:
  std::string text_;
  std::string host_;
  std::optional<Ipv4> ip_;
  std::uint16_t port_ = 0;
};

}  // namespace mirelo::poll
