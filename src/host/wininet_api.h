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

  // Why the last request that was sent has failed, as far as that is known: for people.
  enum class Failure {
    None,
    UnknownHost,  // no machine has the name
    Refused,      // nobody listens at the port
    Unreachable,  // no way leads to the machine
    TimedOut,
    NoReply,  // what came is no HTTP, or only a part of it
  };
  virtual Failure LastFailure() const { return Failure::None; }

  // Opens a session, which no server hears of. `agent` without value sends no User-Agent. `access_type` says
  // how servers are to be reached: kOpenTypePreconfig, the one that is in use, leaves that to the machine.
  virtual Handle InternetOpenA(const std::optional<std::string>& agent, std::uint32_t access_type) = 0;

  // Sets one of the options above, for this handle and what is opened from it later. False for others.
  virtual bool InternetSetOptionA(Handle handle, std::uint32_t option, std::int32_t value) = 0;

  // Names the server; makes no connection yet. Port 0 is the default (80) of `service`, of which kServiceHttp
  // is the one in use. An empty user sends no credentials.
  virtual Handle InternetConnectA(Handle internet, const std::string& host, std::uint16_t port,
                                  const std::string& user, const std::string& password,
                                  std::uint32_t service) = 0;

  // Brings `url` into canonical form, the one that browsers use: `flags` is kBrowserMode. The result has at
  // most `capacity` characters, terminator included. Nothing when the call fails, a capacity too small among
  // the reasons.
  virtual std::optional<std::string> InternetCanonicalizeUrlA(const std::string& url, std::uint32_t capacity,
                                                              std::uint32_t flags) = 0;

  // Describes a request; sends nothing yet. `version` is "HTTP/1.0", an empty `referrer` sends no Referer,
  // and `flags` is kFlagReload: the reply comes from the server itself and from no cache.
  virtual Handle HttpOpenRequestA(Handle connection, const std::string& verb, const std::string& object,
                                  const std::string& version, const std::string& referrer,
                                  std::uint32_t flags) = 0;

  // Sends the request and waits for the reply's headers. False when the server could not be reached, when the
  // time ran out, and when what came is no reply's head or only a part of one. A connection that closes
  // before any of a reply came counts as sent, with no headers and an empty body.
  virtual bool HttpSendRequestA(Handle request, const std::string& headers, const std::string& body) = 0;

  // What one of the info levels above asks for, in at most `capacity` characters, terminator included: the
  // value of a header as the server wrote it, or the verb as it was sent. Nothing when the reply has no such
  // header, or it does not fit.
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
