#include "adapters/curl/canonical_url.h"

#include <algorithm>
#include <cstddef>

namespace mirelo::curl {

namespace {

std::string WithoutLineBreaksAndTabs(std::string_view url) {
  std::string kept(url);
  std::erase_if(kept, [](char c) { return c == '\t' || c == '\r' || c == '\n'; });
  kept.erase(kept.find_last_not_of(' ') + 1);
  return kept;
}

void AppendEncoded(std::string& text, char c) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  text += {'%', kHex[byte >> 4], kHex[byte & 15]};
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
  for (const char c : std::string_view(kept).substr(0, path_end)) {
    if (c == ' ' || c == '\\') {
      AppendEncoded(path, c);
    } else {
      path += c;
    }
  }
  return WithoutDotSegments(path) + kept.substr(path_end);
}

std::string RequestTarget(std::string_view resource) {
  std::string target;
  target.reserve(resource.size() + 1);
  if (!resource.starts_with('/')) target += '/';
  for (const char c : resource) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte <= ' ' || byte == 0x7F) {
      AppendEncoded(target, c);
    } else {
      target += c;
    }
  }
  return target;
}

}  // namespace mirelo::curl
