#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/wininet_wrapper.h"

namespace mirelo::wire {

// An HTTP client that remembers what became of the last request, for who has to say why there are no quotes.
class AskedServer : public host::WinInetWrapper {
 public:
  using host::WinInetWrapper::WinInetWrapper;

  // The server that was named last, as UTF-8; empty when none was.
  const std::string& Host() const { return host_; }
  std::uint16_t Port() const { return port_; }
  // Whether the last request counts as sent. It was closed without a reply when nothing came then.
  bool WasSent() const { return was_sent_; }
  // What came of the reply's body, up to kBeginning bytes.
  static constexpr std::size_t kBeginning = 200;
  const std::string& Beginning() const { return beginning_; }

  Handle InternetConnectA(Handle internet, const std::string& host, std::uint16_t port,
                          const std::string& user, const std::string& password,
                          std::uint32_t service) override;
  bool HttpSendRequestA(Handle request, const std::string& headers, const std::string& body) override;
  bool InternetReadFile(Handle request, char* buffer, std::uint32_t capacity, std::uint32_t& read) override;

 private:
  std::string host_;
  std::uint16_t port_ = 0;
  bool was_sent_ = false;
  std::string beginning_;
};

}  // namespace mirelo::wire
