#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/wininet_api.h"

namespace mirelo::host {

// Passes all calls on to another HTTP client. Whoever changes some of them derives from it, and overrides
// these alone.
class WinInetWrapper : public WinInetApi {
 public:
  // `inner` must outlive this.
  explicit WinInetWrapper(WinInetApi& inner) : inner_(inner) {}

  Handle InternetOpenA(const std::optional<std::string>& agent, std::uint32_t access_type) override {
    return inner_.InternetOpenA(agent, access_type);
  }
  bool InternetSetOptionA(Handle handle, std::uint32_t option, std::int32_t value) override {
    return inner_.InternetSetOptionA(handle, option, value);
  }
  Handle InternetConnectA(Handle internet, const std::string& host, std::uint16_t port,
                          const std::string& user, const std::string& password,
                          std::uint32_t service) override {
    return inner_.InternetConnectA(internet, host, port, user, password, service);
  }
  std::optional<std::string> InternetCanonicalizeUrlA(const std::string& url, std::uint32_t capacity,
                                                      std::uint32_t flags) override {
    return inner_.InternetCanonicalizeUrlA(url, capacity, flags);
  }
  Handle HttpOpenRequestA(Handle connection, const std::string& verb, const std::string& object,
                          const std::string& version, const std::string& referrer,
                          std::uint32_t flags) override {
    return inner_.HttpOpenRequestA(connection, verb, object, version, referrer, flags);
  }
  bool HttpSendRequestA(Handle request, const std::string& headers, const std::string& body) override {
    return inner_.HttpSendRequestA(request, headers, body);
  }
  std::optional<std::string> HttpQueryInfoA(Handle request, std::uint32_t level,
                                            std::uint32_t capacity) override {
    return inner_.HttpQueryInfoA(request, level, capacity);
  }
  bool InternetReadFile(Handle request, char* buffer, std::uint32_t capacity, std::uint32_t& read) override {
    return inner_.InternetReadFile(request, buffer, capacity, read);
  }
  Failure LastFailure() const override { return inner_.LastFailure(); }
  bool InternetCloseHandle(Handle handle) override { return inner_.InternetCloseHandle(handle); }

 protected:
  WinInetApi& inner() { return inner_; }

 private:
  WinInetApi& inner_;
};

}  // namespace mirelo::host
