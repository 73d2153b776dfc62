#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/wininet_api.h"

namespace mirelo::testing {

// An internet of one server, which answers each request with what a function makes of it. Transfers may nest.
class AnsweringInternet : public host::WinInetApi {
 public:
  struct Request {
    std::string host;
    std::uint16_t port = 0;
    std::string verb;
    std::string resource;
    std::string headers;
    std::string body;
  };

  // The body of the reply; nothing when the server cannot be reached.
  std::function<std::optional<std::string>(const Request& request)> answer;

  // What was sent, oldest first.
  std::vector<Request> requests;
  std::vector<std::string> Resources() const {
    std::vector<std::string> resources;
    for (const Request& request : requests) resources.push_back(request.resource);
    return resources;
  }

  Handle InternetOpenA(const std::optional<std::string>&, std::uint32_t) override { return 1; }
  bool InternetSetOptionA(Handle, std::uint32_t, std::int32_t) override { return true; }
  Handle InternetConnectA(Handle, const std::string& host, std::uint16_t port, const std::string&,
                          const std::string&, std::uint32_t) override {
    transfers_.push_back({{host, port, "", "", "", ""}, ""});
    return kFirstTransfer + static_cast<Handle>(transfers_.size() - 1);
  }
  std::optional<std::string> InternetCanonicalizeUrlA(const std::string& url, std::uint32_t,
                                                      std::uint32_t) override {
    return url;
  }
  // The request goes by the handle of its connection.
  Handle HttpOpenRequestA(Handle connection, const std::string& verb, const std::string& object,
                          const std::string&, const std::string&, std::uint32_t) override {
    Request& request = Of(connection).request;
    request.verb = verb;
    request.resource = object;
    return connection;
  }
  bool HttpSendRequestA(Handle handle, const std::string& headers, const std::string& body) override {
    Request request = Of(handle).request;
    request.headers = headers;
    request.body = body;
    requests.push_back(request);
    const std::optional<std::string> reply = answer(request);
    Of(handle).unread = reply.value_or("");
    return reply.has_value();
  }
  std::optional<std::string> HttpQueryInfoA(Handle, std::uint32_t, std::uint32_t) override {
    return std::nullopt;
  }
  bool InternetReadFile(Handle handle, char* buffer, std::uint32_t capacity, std::uint32_t& read) override {
    std::string& unread = Of(handle).unread;
    read = static_cast<std::uint32_t>(unread.copy(buffer, capacity));
    unread.erase(0, read);
    return true;
  }
  bool InternetCloseHandle(Handle) override { return true; }

 private:
  static constexpr Handle kFirstTransfer = 2;
  struct Transfer {
    Request request;
    std::string unread;
  };
  Transfer& Of(Handle handle) { return transfers_.at(handle - kFirstTransfer); }

  std::vector<Transfer> transfers_;
};

}  // namespace mirelo::testing
