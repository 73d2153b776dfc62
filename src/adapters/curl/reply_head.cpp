#include "adapters/curl/reply_head.h"

#include <strings.h>

#include <algorithm>
#include <charconv>
#include <iterator>

namespace mirelo::curl {

namespace {

constexpr int kRedirects[] = {301, 302, 303, 307, 308};

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Header names are ASCII and known without regard to case.
bool SameName(std::string_view a, std::string_view b) {
  return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

// The number that all of `digits` is; nothing for anything but digits, and for one that does not fit.
template <class Number>
std::optional<Number> ParseDigits(std::string_view digits) {
  Number number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [rest, error] = std::from_chars(digits.data(), end, number);
  if (error != std::errc() || rest != end || digits.front() == '-') return std::nullopt;
  return number;
}

}  // namespace

void ReplyHead::AddLine(std::string_view line) {
  size_ += line.size();
  if (complete_) return;
  if (status_ == 0) return ReadStatus(line);
  const std::string_view content = Trimmed(line);
  if (content.empty()) return EndHead();
  ReadHeader(line);
}

void ReplyHead::ReadStatus(std::string_view line) {
  const std::size_t blank = std::min(line.find(' '), line.size());
  status_ = ParseDigits<int>(Trimmed(line.substr(blank)).substr(0, 3)).value_or(0);
}

void ReplyHead::ReadHeader(std::string_view line) {
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos) return;
  const struct {
    std::string_view name;
    std::optional<std::string>& value;
  } kept[] = {
      {"Content-Type", content_type_},
      {"Content-Length", content_length_},
      {"Location", location_},
      {"Transfer-Encoding", transfer_encoding_},
  };
  const std::string_view name = line.substr(0, colon);
  const auto header = std::find_if(std::begin(kept), std::end(kept),
                                   [&](const auto& each) { return SameName(each.name, name); });
  if (header == std::end(kept) || header->value) return;
  header->value = Trimmed(line.substr(colon + 1));
}

void ReplyHead::EndHead() {
  const bool interim =
      status_ / 100 == 1 && status_ != 101;  // 101 is the last HTTP that its connection speaks
  if (!interim) {
    complete_ = true;
    return;
  }
  const std::size_t size = size_;
  *this = ReplyHead();
  size_ = size;
}

std::optional<std::string> ReplyHead::RedirectsTo() const {
  const bool redirects =
      std::find(std::begin(kRedirects), std::end(kRedirects), status_) != std::end(kRedirects);
  return redirects ? location_ : std::nullopt;
}

std::optional<std::uint64_t> ReplyHead::BodySize() const {
  if (transfer_encoding_ || !content_length_) return std::nullopt;
  return ParseDigits<std::uint64_t>(*content_length_);
}

}  // namespace mirelo::curl
