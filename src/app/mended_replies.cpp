#include "app/mended_replies.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "automation/text.h"

namespace mirelo::app {

namespace {

constexpr std::string_view kHead = "/req?GetLastQuote(";
constexpr std::string_view kTail = ")";

bool AsksForQuotes(std::string_view object) { return object.starts_with(kHead) && object.ends_with(kTail); }

std::vector<std::string> TickersOf(std::string_view object) {
  object.remove_prefix(kHead.size());
  object.remove_suffix(kTail.size());
  return Split(object, ",");
}

}  // namespace

std::vector<QuoteFlaw> MendedReplies::TakeFlaws() {
  tickers_before_ = 0;
  return std::exchange(flaws_, {});
}

host::WinInetApi::Handle MendedReplies::HttpOpenRequestA(Handle connection, const std::string& verb,
                                                         const std::string& object,
                                                         const std::string& version,
                                                         const std::string& referrer, std::uint32_t flags) {
  const Handle request = inner_.HttpOpenRequestA(connection, verb, object, version, referrer, flags);
  requests_.erase(request);
  if (request != 0 && AsksForQuotes(object)) requests_[request].tickers = TickersOf(object);
  return request;
}

bool MendedReplies::InternetReadFile(Handle request, char* buffer, std::uint32_t capacity,
                                     std::uint32_t& read) {
  auto found = requests_.find(request);
  if (found == requests_.end()) return inner_.InternetReadFile(request, buffer, capacity, read);
  if (!found->second.body) {
    // Other handlers run meanwhile and may close the handle.
    std::string body = MendedBody(request, found->second.tickers);
    found = requests_.find(request);
    if (found == requests_.end()) {
      read = 0;
      return false;
    }
    found->second.body = std::move(body);
  }
  QuoteRequest& quotes = found->second;
  read = static_cast<std::uint32_t>(quotes.body->copy(buffer, capacity, quotes.given));
  quotes.given += read;
  return true;
}

std::string MendedReplies::MendedBody(Handle request, const std::vector<std::string>& tickers_asked) {
  const std::vector<std::string> tickers = tickers_asked;  // they go with the handle
  std::string body;
  std::array<char, 4096> piece;
  for (std::uint32_t count = 1; count > 0;) {
    count = 0;
    inner_.InternetReadFile(request, piece.data(), piece.size(), count);
    body.append(piece.data(), count);
  }
  MendedReply mended = Mend(std::move(body), tickers);
  for (QuoteFlaw& flaw : mended.flaws) {
    flaw.ticker += tickers_before_;
    flaws_.push_back(std::move(flaw));
  }
  tickers_before_ += tickers.size();
  return std::move(mended.body);
}

bool MendedReplies::InternetCloseHandle(Handle handle) {
  requests_.erase(handle);
  return inner_.InternetCloseHandle(handle);
}

// --- What passes as it is --------------------------------------------------------------------------------

host::WinInetApi::Handle MendedReplies::InternetOpenA(const std::optional<std::string>& agent,
                                                      std::uint32_t access_type) {
  return inner_.InternetOpenA(agent, access_type);
}

bool MendedReplies::InternetSetOptionA(Handle handle, std::uint32_t option, std::int32_t value) {
  return inner_.InternetSetOptionA(handle, option, value);
}

host::WinInetApi::Handle MendedReplies::InternetConnectA(Handle internet, const std::string& host,
                                                         std::uint16_t port, const std::string& user,
                                                         const std::string& password, std::uint32_t service) {
  return inner_.InternetConnectA(internet, host, port, user, password, service);
}

std::optional<std::string> MendedReplies::InternetCanonicalizeUrlA(const std::string& url,
                                                                   std::uint32_t capacity,
                                                                   std::uint32_t flags) {
  return inner_.InternetCanonicalizeUrlA(url, capacity, flags);
}

bool MendedReplies::HttpSendRequestA(Handle request, const std::string& headers, const std::string& body) {
  return inner_.HttpSendRequestA(request, headers, body);
}

std::optional<std::string> MendedReplies::HttpQueryInfoA(Handle request, std::uint32_t level,
                                                         std::uint32_t capacity) {
  return inner_.HttpQueryInfoA(request, level, capacity);
}

}  // namespace mirelo::app
