#include "app/output/text_table.h"

#include <algorithm>
#include <utility>

#include "automation/number.h"
#include "automation/text.h"
#include "automation/visible_text.h"
#include "terminal/text_columns.h"

namespace mirelo::app {

namespace {

using terminal::Painted;
using terminal::ShownText;

// How cells are painted; empty for those that are not.
constexpr const char* kBoldHeader = "1";
constexpr const char* kGreen = "32";
constexpr const char* kRed = "31";
constexpr const char* kGap = "  ";

std::string Padded(const std::string& cell, std::size_t width, bool to_the_right) {
  const std::string padding(width - std::min(width, terminal::ColumnsOf(cell)), ' ');
  return to_the_right ? padding + cell : cell + padding;
}

const char* PaintOf(const std::string& header, const std::string& cell, int direction) {
  const double sign = header == "Change" ? Val(cell) : header == TextTable::kPriceHeader ? direction : 0;
  return sign > 0 ? kGreen : sign < 0 ? kRed : "";
}

}  // namespace

TextTable::TextTable(std::vector<std::string> headers) : headers_(std::move(headers)) {
  for (auto& header : headers_) header = Visible(header);
}

// Cells are as wide as they are shown, so they are made visible here.
void TextTable::AddRow(std::vector<std::string> cells, int direction) {
  cells.resize(headers_.size());
  for (auto& cell : cells) cell = Visible(cell);
  rows_.push_back(std::move(cells));
  directions_.push_back(direction);
}

ShownText TextTable::ToText(bool color) const {
  const auto widths = Widths();
  const auto numeric = NumericColumns();
  ShownText text;
  const auto line = [&](const std::vector<std::string>& cells, const auto& paint_of) {
    std::string plain;  // since the last cell that is painted
    for (std::size_t c = 0; c < cells.size(); ++c) {
      if (c > 0) plain += kGap;
      const std::string paint = color ? paint_of(c) : "";
      const std::string cell = Padded(cells[c], widths[c], numeric[c]);
      if (paint.empty()) {
        plain += cell;
        continue;
      }
      text += ShownText(plain) + Painted(ShownText(cell), paint);
      plain.clear();
    }
    text += ShownText(RTrim(plain)) + "\n";
  };

  line(headers_, [](std::size_t) { return kBoldHeader; });
  std::vector<std::string> rules;
  rules.reserve(widths.size());
  for (const auto width : widths) rules.emplace_back(width, '-');
  line(rules, [](std::size_t) { return ""; });
  for (std::size_t r = 0; r < rows_.size(); ++r) {
    line(rows_[r], [&](std::size_t c) { return PaintOf(headers_[c], rows_[r][c], directions_[r]); });
  }
  return text;
}

std::vector<std::size_t> TextTable::Widths() const {
  std::vector<std::size_t> widths;
  for (std::size_t c = 0; c < headers_.size(); ++c) {
    std::size_t width = terminal::ColumnsOf(headers_[c]);
    for (const auto& row : rows_) width = std::max(width, terminal::ColumnsOf(row[c]));
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
