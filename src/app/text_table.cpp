#include "app/text_table.h"

#include <algorithm>
#include <utility>

#include "automation/number.h"
#include "automation/text.h"

namespace mirelo::app {

namespace {

constexpr const char* kBold = "\033[1m";
constexpr const char* kGreen = "\033[32m";
constexpr const char* kRed = "\033[31m";
constexpr const char* kPlain = "\033[0m";
constexpr const char* kGap = "  ";

std::size_t WidthOf(const std::string& cell) { return static_cast<std::size_t>(Len(cell)); }

std::string Padded(const std::string& cell, std::size_t width, bool to_the_right) {
  const std::string padding(width - std::min(width, WidthOf(cell)), ' ');
  return to_the_right ? padding + cell : cell + padding;
}

const char* ColorOf(const std::string& header, const std::string& cell, int direction) {
  const double sign = header == "Change" ? Val(cell) : header == TextTable::kPriceHeader ? direction : 0;
  return sign > 0 ? kGreen : sign < 0 ? kRed : "";
}

}  // namespace

TextTable::TextTable(std::vector<std::string> headers) : headers_(std::move(headers)) {}

void TextTable::AddRow(std::vector<std::string> cells, int direction) {
  cells.resize(headers_.size());
  rows_.push_back(std::move(cells));
  directions_.push_back(direction);
}

std::string TextTable::ToText(bool color) const {
  const auto widths = Widths();
  const auto numeric = NumericColumns();
  std::string text;
  const auto line = [&](const std::vector<std::string>& cells, const auto& color_of) {
    std::string row;
    for (std::size_t c = 0; c < cells.size(); ++c) {
      const std::string paint = color ? color_of(c) : "";
      if (c > 0) row += kGap;
      row += paint + Padded(cells[c], widths[c], numeric[c]) + (paint.empty() ? "" : kPlain);
    }
    text.append(RTrim(row)).append("\n");
  };

  line(headers_, [](std::size_t) { return kBold; });
  std::vector<std::string> rules;
  for (const auto width : widths) rules.emplace_back(width, '-');
  line(rules, [](std::size_t) { return ""; });
  for (std::size_t r = 0; r < rows_.size(); ++r) {
    line(rows_[r], [&](std::size_t c) { return ColorOf(headers_[c], rows_[r][c], directions_[r]); });
  }
  return text;
}

std::vector<std::size_t> TextTable::Widths() const {
  std::vector<std::size_t> widths;
  for (std::size_t c = 0; c < headers_.size(); ++c) {
    std::size_t width = WidthOf(headers_[c]);
    for (const auto& row : rows_) width = std::max(width, WidthOf(row[c]));
    widths.push_back(width);
  }
  return widths;
}

std::vector<bool> TextTable::NumericColumns() const {
  std::vector<bool> numeric;
  for (std::size_t c = 0; c < headers_.size(); ++c) {
    numeric.push_back(!rows_.empty() && std::all_of(rows_.begin(), rows_.end(), [&](const auto& row) {
      return row[c].empty() || IsNumeric(row[c]);
    }));
  }
  return numeric;
}

}  // namespace mirelo::app
