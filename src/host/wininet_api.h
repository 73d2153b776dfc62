#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mirelo::host {

// The nine calls of the machine's HTTP client. Strings are bytes in the ANSI code page. A handle of 0 is
// none. Calls block their caller while the message loop goes on, so other handlers may run inside them.
class WinInetApi {
 public:
  using Handle = std::uint32_t;

  static constexpr std::uint32_t kOpenTypePreconfig = 0;
  static constexpr std::uint32_t kServiceHttp = 3;
  static constexpr std::uint32_t kBrowserMode = 0x2000000;
  static constexpr std::uint32_t kFlagReload = 0x80000000;

  // Options: milliseconds, 4 bytes.
  static constexpr std::uint32_t kOptionConnectTimeout = 2;
  static constexpr std::uint32_t kOptionSendTimeout = 5;
  static constexpr std::uint32_t kOptionReceiveTimeout = 6;
  static constexpr std::uint32_t kOptionDataSendTimeout = 7;
  static constexpr std::uint32_t kOptionDataReceiveTimeout = 8;

  // Info levels.
  static constexpr std::uint32_t kQueryContentType = 1;
  static constexpr std::uint32_t kQueryContentLength = 5;
  static constexpr std::uint32_t kQueryRequestMethod = 45;

  virtual ~WinInetApi() = default;

  // `agent` without value sends no User-Agent.
  virtual Handle InternetOpenA(const std::optional<std::string>& agent, std::uint32_t access_type) = 0;

  virtual bool InternetSetOptionA(Handle handle, std::uint32_t option, std::int32_t value) = 0;

  // Makes no connection yet. Port 0 is the service's default (80).
  virtual Handle InternetConnectA(Handle internet, const std::string& host, std::uint16_t port,
                                  const std::string& user, const std::string& password,
                                  std::uint32_t service) = 0;

  // Canonicalises `url` in the way `flags` say, into at most `capacity` characters, terminator included.
  // Nothing when the call fails, a capacity too small among the reasons.
  virtual std::optional<std::string> InternetCanonicalizeUrlA(const std::string& url, std::uint32_t capacity,
                                                              std::uint32_t flags) = 0;

  virtual Handle HttpOpenRequestA(Handle connection, const std::string& verb, const std::string& object,
                                  const std::string& version, const std::string& referrer,
                                  std::uint32_t flags) = 0;

  // Sends and waits for the reply's headers. False when the server could not be reached, the time ran out, or
  // what came is not the head of a reply, or only part of one; a connection that closes before any reply
  // counts as sent, with no headers and an empty body.
  virtual bool HttpSendRequestA(Handle request, const std::string& headers, const std::string& body) = 0;

  // The value of a header as the server wrote it; nothing when the reply has none.
  virtual std::optional<std::string> HttpQueryInfoA(Handle request, std::uint32_t level,
                                                    std::uint32_t capacity) = 0;

  // Reads up to `capacity` bytes of the body into `buffer` and sets `read`. The end of the body, and of a
  // connection that broke, is a read of 0 bytes.
  virtual bool InternetReadFile(Handle request, char* buffer, std::uint32_t capacity,
                                std::uint32_t& read) = 0;

  // Closes a handle and those that were opened from it.
  virtual bool InternetCloseHandle(Handle handle) = 0;
};

}  // namespace mirelo::host
