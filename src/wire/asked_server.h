#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/wininet_wrapper.h"

namespace mirelo::wire {

// An HTTP client that remembers what became of the last request, so that a person can be told why there are
// no quotes.
class AskedServer : public host::WinInetWrapper {
 public:
  using host::WinInetWrapper::WinInetWrapper;

  // The name of the server that was asked last, as UTF-8; empty when none was.
  const std::string& Host() const { return host_; }
  std::uint16_t Port() const { return port_; }
  // The beginning of the reply's body, up to kBeginning bytes.
  static constexpr std::size_t kBeginning = 200;
  const std::string& Beginning() const { return beginning_; }

  Handle InternetConnectA(Handle internet, const std::string& host, std::uint16_t port,
                          const std::string& user, const std::string& password,
                          std::uint32_t service) override;
  bool InternetReadFile(Handle request, char* buffer, std::uint32_t capacity, std::uint32_t& read) override;

 private:
  std::string host_;
  std::uint16_t port_ = 0;
  std::string beginning_;
};

}  // namespace mirelo::wire
