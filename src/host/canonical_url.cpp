#include "host/canonical_url.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "automation/hex.h"

namespace mirelo::host {

namespace {

// Whether any character of the text is one that `is_special` picks. Almost no text has one; without branches
// the compiler looks at many characters at a time.
template <class IsSpecial>
bool HasAny(std::string_view text, IsSpecial is_special) {
  unsigned char any = 0;
  for (const char c : text) any |= static_cast<unsigned char>(is_special(c));
  return any != 0;
}

std::string WithoutLineBreaksAndTabs(std::string_view url) {
  const auto goes = [](char c) { return (c == '\t') | (c == '\r') | (c == '\n'); };
  std::string kept(url);
  if (HasAny(kept, goes)) std::erase_if(kept, goes);
  kept.erase(kept.find_last_not_of(' ') + 1);
  return kept;
}

// Appends the text, with each character that `is_special` picks percent-encoded.
template <class IsSpecial>
void AppendEncoded(std::string& result, std::string_view text, IsSpecial is_special) {
  if (!HasAny(text, is_special)) {
    result += text;
    return;
  }
  for (const char c : text) {
    if (is_special(c)) {
      AppendHex(result += '%', static_cast<std::uint8_t>(c));
    } else {
      result += c;
    }
  }
}

// The path rebuilt segment by segment: "." is dropped and ".." takes the segment before it away. Either at
// the end leaves the slash in front of it.
std::string WithoutDotSegments(std::string_view path) {
  std::string result;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find('/', 1), path.size());
    const std::string_view segment = path.substr(0, end);
    path.remove_prefix(end);
    const bool up = segment == "/..";
    if (!up && segment != "/.") {
      result += segment;
      continue;
    }
    if (up) result.resize(result.find_last_of('/') == std::string::npos ? 0 : result.find_last_of('/'));
    if (path.empty()) result += '/';
  }
  return result;
}

}  // namespace

std::string CanonicalUrl(std::string_view url) {
  const std::string kept = WithoutLineBreaksAndTabs(url);
  const std::size_t path_end = std::min(kept.find_first_of("?#"), kept.size());
  std::string path;
  AppendEncoded(path, std::string_view(kept).substr(0, path_end),
                [](char c) { return c == ' ' || c == '\\'; });
  return WithoutDotSegments(path).append(kept, path_end);
}

std::string RequestTarget(std::string_view resource) {
  std::string target;
  target.reserve(resource.size() + 1);
  if (!resource.starts_with('/')) target += '/';
  AppendEncoded(target, resource, [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte <= ' ') | (byte == 0x7F);
  });
  return target;
}

}  // namespace mirelo::host
