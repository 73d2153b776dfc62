#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/event.h"
#include "host/wininet_wrapper.h"
#include "wire/quote_reply.h"

namespace mirelo::wire {

// An HTTP client that mends QuoteTracker's replies to requests for quotes (Mend), so that what is wrong with
// one ticker's record costs the other tickers nothing. It reads the whole of each reply before it hands over
// any of it. The request fails when the reply could not be read to its end, and when it has more than
// kMostFields lines and fields, as no QuoteTracker in order sends: the facade would take far more memory for
// them than they take on the way. Replies to other requests are as they came.
class MendedReplies : public host::WinInetWrapper {
 public:
  // Lines and fields of a reply, together.
  static constexpr std::size_t kMostFields = 100'000;

  using host::WinInetWrapper::WinInetWrapper;

  // Raised when a reply has more of them; the text says so to people, and of which server.
  Event<const std::string&> Refused;

  // Raised with records of a reply that no ticker was given, in bytes of the ANSI code page, while the reply
  // is read (Mend). A handler must raise nothing.
  Event<std::string_view> LeftOut;

  // What was wrong with the records that were handed over since this was last asked. Tickers are counted
  // through the requests of that time, one after the other.
  std::vector<QuoteFlaw> TakeFlaws();

  Handle InternetConnectA(Handle internet, const std::string& host, std::uint16_t port,
                          const std::string& user, const std::string& password,
                          std::uint32_t service) override;
  Handle HttpOpenRequestA(Handle connection, const std::string& verb, const std::string& object,
                          const std::string& version, const std::string& referrer,
                          std::uint32_t flags) override;
  bool InternetReadFile(Handle request, char* buffer, std::uint32_t capacity, std::uint32_t& read) override;
  bool InternetCloseHandle(Handle handle) override;

 private:
  struct Request {
    std::string server;                               // for people
    std::optional<std::vector<std::string>> tickers;  // of one for quotes
    bool is_read = false;
    std::optional<std::string> body;  // mended, as soon as it is read; nothing when that failed
    std::size_t given = 0;            // bytes of it that were handed over
  };

  std::optional<std::string> WholeBody(Handle handle, const Request& request);
  std::string Mended(std::string body, const std::vector<std::string>& tickers);

  std::map<Handle, std::string> servers_;  // of the connections
  std::map<Handle, Request> requests_;
  std::vector<QuoteFlaw> flaws_;
  std::size_t tickers_before_ = 0;  // of the requests since flaws were last taken
};

}  // namespace mirelo::wire
