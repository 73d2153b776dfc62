#include "wire/mended_replies.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

#include "automation/ansi.h"
#include "automation/text.h"

namespace mirelo::wire {

namespace {

constexpr std::string_view kRequest = "/req?GetLastQuote(";
constexpr std::string_view kTail = ")";

constexpr const char* kMostInWords = "100,000";
static_assert(MendedReplies::kMostFields == 100'000);

bool PartsFields(char byte) { return byte == ',' || byte == '\n'; }

bool AsksForQuotes(std::string_view object) {
  return object.starts_with(kRequest) && object.ends_with(kTail);
}

std::vector<std::string> TickersOf(std::string_view object) {
  object.remove_prefix(kRequest.size());
  object.remove_suffix(kTail.size());
  return Split(object, ",");
}

}  // namespace

std::vector<QuoteFlaw> MendedReplies::TakeFlaws() {
  tickers_before_ = 0;
  return std::exchange(flaws_, {});
}

host::WinInetApi::Handle MendedReplies::InternetConnectA(Handle internet, const std::string& host,
                                                         std::uint16_t port, const std::string& user,
                                                         const std::string& password, std::uint32_t service) {
  const Handle connection = inner().InternetConnectA(internet, host, port, user, password, service);
  if (connection != 0) servers_[connection] = AnsiToText(host) + ":" + std::to_string(port);
  return connection;
}

host::WinInetApi::Handle MendedReplies::HttpOpenRequestA(Handle connection, const std::string& verb,
                                                         const std::string& object,
                                                         const std::string& version,
                                                         const std::string& referrer, std::uint32_t flags) {
  const Handle request = inner().HttpOpenRequestA(connection, verb, object, version, referrer, flags);
  if (request == 0) return request;
  Request& known = requests_[request] = Request();
  known.server = servers_[connection];
  if (AsksForQuotes(object)) known.tickers = TickersOf(object);
  return request;
}

bool MendedReplies::InternetReadFile(Handle handle, char* buffer, std::uint32_t capacity,
                                     std::uint32_t& read) {
  read = 0;
  auto found = requests_.find(handle);
  if (found == requests_.end()) return inner().InternetReadFile(handle, buffer, capacity, read);
  if (!found->second.is_read) {
    // Other handlers run meanwhile and may close the handle.
    std::optional<std::string> body = WholeBody(handle, Request(found->second));
    found = requests_.find(handle);
    if (found == requests_.end()) return false;
    found->second.is_read = true;
    found->second.body = std::move(body);
  }
  Request& request = found->second;
  if (!request.body) return false;
  read = static_cast<std::uint32_t>(request.body->copy(buffer, capacity, request.given));
  request.given += read;
  return true;
}

std::optional<std::string> MendedReplies::WholeBody(Handle handle, const Request& request) {
  std::string body;
  std::size_t fields = 0;
  std::array<char, 4096> piece;
  for (std::uint32_t count = 1; count > 0;) {
    count = 0;
    if (!inner().InternetReadFile(handle, piece.data(), piece.size(), count)) return std::nullopt;
    const std::string_view bytes(piece.data(), count);
    fields += static_cast<std::size_t>(std::count_if(bytes.begin(), bytes.end(), PartsFields));
    if (fields > kMostFields) {
      Refused.Raise("The reply of http://" + request.server + " was refused: it has more than " +
                    kMostInWords + " lines and fields");
      return std::nullopt;
    }
    body += bytes;
  }
  return request.tickers ? Mended(std::move(body), *request.tickers) : std::move(body);
}

std::string MendedReplies::Mended(std::string body, const std::vector<std::string>& tickers) {
  std::function<void(std::string_view)> leave_out;
  if (LeftOut.HasSubscribers()) leave_out = [this](std::string_view record) { LeftOut.Raise(record); };
  MendedReply mended = Mend(std::move(body), tickers, leave_out);
  for (QuoteFlaw& flaw : mended.flaws) {
    flaw.ticker += tickers_before_;
    flaws_.push_back(std::move(flaw));
  }
  tickers_before_ += tickers.size();
  return std::move(mended.body);
}

bool MendedReplies::InternetCloseHandle(Handle handle) {
  servers_.erase(handle);
  requests_.erase(handle);
  return inner().InternetCloseHandle(handle);
}

}  // namespace mirelo::wire
