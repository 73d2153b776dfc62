#pragma once

#include "host/wininet_api.h"

namespace mirelo::qt {

// HTTP as another adapter does it, with a cursor that says so while a call waits for the network.
class BusyInternet final : public host::WinInetApi {
 public:
  // A Qt application must exist; it and `internet` must outlive this.
  explicit BusyInternet(host::WinInetApi& internet) : internet_(internet) {}

  Handle InternetOpenA(const std::optional<std::string>& agent, std::uint32_t access_type) override {
    return internet_.InternetOpenA(agent, access_type);
  }
  bool InternetSetOptionA(Handle handle, std::uint32_t option, std::int32_t value) override {
    return internet_.InternetSetOptionA(handle, option, value);
  }
  Handle InternetConnectA(Handle internet, const std::string& host, std::uint16_t port,
                          const std::string& user, const std::string& password,
                          std::uint32_t service) override {
    return internet_.InternetConnectA(internet, host, port, user, password, service);
  }
  std::optional<std::string> InternetCanonicalizeUrlA(const std::string& url, std::uint32_t capacity,
                                                      std::uint32_t flags) override {
    return internet_.InternetCanonicalizeUrlA(url, capacity, flags);
  }
  Handle HttpOpenRequestA(Handle connection, const std::string& verb, const std::string& object,
                          const std::string& version, const std::string& referrer,
                          std::uint32_t flags) override {
    return internet_.HttpOpenRequestA(connection, verb, object, version, referrer, flags);
  }
  std::optional<std::string> HttpQueryInfoA(Handle request, std::uint32_t level,
                                            std::uint32_t capacity) override {
    return internet_.HttpQueryInfoA(request, level, capacity);
  }
  bool InternetCloseHandle(Handle handle) override { return internet_.InternetCloseHandle(handle); }

  // These wait.
  bool HttpSendRequestA(Handle request, const std::string& headers, const std::string& body) override;
  bool InternetReadFile(Handle request, char* buffer, std::uint32_t capacity, std::uint32_t& read) override;

 private:
  host::WinInetApi& internet_;
};

}  // namespace mirelo::qt
