#include "quotetracker/command.h"

#include <algorithm>
#include <cstdint>

#include "quotetracker/ascii.h"

namespace mirelo::quotetracker {
namespace {

constexpr std::string_view kPrefix = "/req?";

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  c = ToUpper(c);
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

std::string WithoutEscapes(std::string_view text) {
  std::string plain;
  plain.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool escape =
        text[i] == '%' && i + 2 < text.size() && HexValue(text[i + 1]) >= 0 && HexValue(text[i + 2]) >= 0;
    if (!escape) {
      plain += text[i];
      continue;
    }
    plain += static_cast<char>(HexValue(text[i + 1]) * 16 + HexValue(text[i + 2]));
    i += 2;
  }
  return plain;
}

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

std::vector<std::string> SplitAtCommas(std::string_view text) {
  std::vector<std::string> pieces;
  if (text.empty()) return pieces;
  for (;;) {
    const auto comma = text.find(',');
    pieces.emplace_back(text.substr(0, comma));
    if (comma == std::string_view::npos) return pieces;
    text.remove_prefix(comma + 1);
  }
}

}  // namespace

std::optional<Command> ParseCommand(std::string_view resource) {
  if (!resource.starts_with(kPrefix)) return std::nullopt;
  const std::string text = WithoutEscapes(resource.substr(kPrefix.size()));
  if (std::ranges::any_of(text, IsControl)) return std::nullopt;

  const auto open = text.find('(');
  if (open == std::string::npos || open == 0 || text.back() != ')') return std::nullopt;
  const auto arguments = std::string_view(text).substr(open + 1, text.size() - open - 2);
  return Command{text.substr(0, open), SplitAtCommas(arguments)};
}

}  // namespace mirelo::quotetracker
