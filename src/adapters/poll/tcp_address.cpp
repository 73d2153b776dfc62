#include "adapters/poll/tcp_address.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <system_error>

#include "automation/runtime_error.h"

namespace mirelo::poll {

namespace {

// Lengths of the domain name system.
constexpr std::size_t kLongestName = 253;
constexpr std::size_t kLongestLabel = 63;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool IsLabel(std::string_view label) {
  return !label.empty() && label.size() <= kLongestLabel &&
         std::all_of(label.begin(), label.end(),
                     [](char c) { return IsDigit(c) || IsLetter(c) || c == '-' || c == '_'; });
}

bool IsName(std::string_view host) {
  if (host.size() > kLongestName) return false;
  if (std::all_of(host.begin(), host.end(), [](char c) { return IsDigit(c) || c == '.'; })) return false;
  for (std::size_t dot = host.find('.'); dot != std::string_view::npos; dot = host.find('.')) {
    if (!IsLabel(host.substr(0, dot))) return false;
    host.remove_prefix(dot + 1);
  }
  return IsLabel(host);
}

// A number of 0 to 255 without more digits than it needs.
std::optional<std::uint8_t> Part(std::string_view digits) {
  std::uint8_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number);
  if (error != std::errc() || stop != end || (digits.size() > 1 && digits.front() == '0'))
    return std::nullopt;
  return number;
}

std::optional<Ipv4> DottedAddress(std::string_view host) {
  Ipv4 ip{};
  for (std::size_t i = 0; i < ip.size(); ++i) {
    const std::size_t dot = host.find('.');
    const bool is_last = i + 1 == ip.size();
    if (is_last != (dot == std::string_view::npos)) return std::nullopt;
    const std::optional<std::uint8_t> part = Part(host.substr(0, dot));
    if (!part) return std::nullopt;
    ip[i] = *part;
    if (!is_last) host.remove_prefix(dot + 1);
  }
  return ip;
}

// 0 for what is no port.
std::uint16_t PortNumber(std::string_view text) {
  std::uint16_t port = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, port);
  return error == std::errc() && stop == end ? port : std::uint16_t{0};
}

}  // namespace

void TcpAddress::SetText(const std::string& text) {
  const std::size_t colon = text.rfind(':');
  if (colon == std::string::npos) throw Errors::InvalidProcedureCall();
  const std::uint16_t port = PortNumber(std::string_view(text).substr(colon + 1));
  std::string host = text.substr(0, colon);
  const std::optional<Ipv4> ip = DottedAddress(host);
  if (port == 0 || (!ip && !IsName(host))) throw Errors::InvalidProcedureCall();
  text_ = text;
  host_ = std::move(host);
  ip_ = ip;
  port_ = port;
}

}  // namespace mirelo::poll
