#include "terminal/shown_text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

#include "automation/text.h"

namespace mirelo::terminal {

ShownText Lines(std::string_view text) {
  ShownText shown;
  shown.bytes_ = VisibleLines(text);
  return shown;
}

ShownText Indented(std::string_view text) {
  const std::string indent = "  ";
  std::vector<std::string> lines = Split(VisibleLines(text), "\n");
  for (std::size_t i = 1; i < lines.size(); ++i) {
    if (!lines[i].starts_with(indent)) lines[i].insert(0, indent);
  }
  ShownText shown;
  shown.bytes_ = Join(lines, "\n");
  return shown;
}

ShownText Painted(const ShownText& text, std::string_view parameters) {
  ShownText painted;
  painted.bytes_ = "\033[";
  std::copy_if(parameters.begin(), parameters.end(), std::back_inserter(painted.bytes_),
               [](char c) { return (c >= '0' && c <= '9') || c == ';'; });
  painted.bytes_ += 'm' + text.bytes_ + "\033[0m";
  return painted;
}

}  // namespace mirelo::terminal
