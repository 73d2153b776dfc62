#include "app/live/live_model.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <string_view>
#include <utility>

#include "app/output/shown_quote.h"
#include "app/output/text_table.h"
#include "automation/text.h"
#include "automation/visible_text.h"
#include "terminal/text_columns.h"

namespace mirelo::app {

namespace {

using terminal::ColumnsOf;
using terminal::Picture;
using terminal::PictureLine;
using terminal::Piece;
using terminal::ShownText;
using terminal::TextStyle;
using terminal::Tone;

constexpr const char* kPercentHeader = "%";
constexpr const char* kFreshMark = "*";
constexpr const char* kOldMark = "o";
constexpr std::size_t kColumnGap = 2;
constexpr std::size_t kWidestCell = 30;
constexpr double kGreatestPercent = 1e9;  // beyond it the numbers are none of prices

constexpr std::array kHelp = std::to_array<std::string_view>({
    "Keys",
    "",
    "  arrows, PgUp, PgDn   scroll; columns too wide for the window are at the right",
    "  Home, End            to the first ticker, to the last",
    "  > and <              sort by the next column, by the one before",
    "  r                    sort the other way round",
    "  t                    the order of the quote table",
    "  s                    save the workbook now",
    "  q                    end the day: save, and print the last quotes",
    "  ?                    this help, and back",
    "",
    "Marks",
    "",
    "  *  something changed in the last second; what it was is bold",
    "  o  nothing has changed for a minute; the row is dim",
    "",
    "Last, Change and % are green above the day before's price and red below it.",
});

std::string Fitted(const std::string& text, std::size_t width, bool to_the_right) {
  const std::string cut = ColumnsOf(text) > width ? terminal::Shortened(text, width) : text;
  const std::string padding(width - std::min(width, ColumnsOf(cut)), ' ');
  return to_the_right ? padding + cut : cut + padding;
}

Piece PieceOf(const std::string& text, const TextStyle& style = {}) { return {ShownText(text), style}; }

TextStyle Reversed() {
  TextStyle style;
  style.reverse = true;
  return style;
}

// A window may be narrower than the first column.
void Cut(PictureLine& line, std::size_t room) {
  for (Piece& piece : line) {
    const std::size_t width = ColumnsOf(piece.text.Bytes());
    if (width > room) piece.text = ShownText(std::string(terminal::FirstColumns(piece.text.Bytes(), room)));
    room -= std::min(room, width);
  }
}

int SignOf(double number) { return number > 0 ? 1 : number < 0 ? -1 : 0; }

}  // namespace

LiveModel::LiveModel(std::vector<std::string> columns, std::string price_format)
    : columns_(std::move(columns)), price_format_(std::move(price_format)) {
  for (const std::string& column : columns_) headers_.push_back(Visible(column));
  price_ = ColumnNamed(TextTable::kPriceHeader);
  change_ = ColumnNamed("Change");
  percent_ = kNone;
  if (price_ != kNone && change_ != kNone) {
    percent_ = change_ + 1;
    headers_.insert(headers_.begin() + static_cast<std::ptrdiff_t>(percent_), kPercentHeader);
    if (price_ >= percent_) ++price_;
  }
  for (const std::string& header : headers_)
    widest_.push_back(ColumnsOf(header) + 1);  // and the mark of sorting
}

std::size_t LiveModel::ColumnNamed(const std::string& header) const {
  const auto found = std::find(headers_.begin(), headers_.end(), header);
  return found == headers_.end() ? kNone : static_cast<std::size_t>(found - headers_.begin());
}

// --- What is known --------------------------------------------------------------------------------------

void LiveModel::Take(const day::QuoteRows& rows, Time now) {
  if (rows_.size() < rows.size()) rows_.resize(rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) TakeRow(rows_[i], rows[i], now);

  is_numeric_.assign(headers_.size(), true);
  for (const Row& row : rows_) {
    for (std::size_t c = 0; c < row.cells.size(); ++c) {
      const day::QuoteValue::Kind kind = row.cells[c].value.kind();
      if (kind != day::QuoteValue::Kind::Nothing && kind != day::QuoteValue::Kind::Number)
        is_numeric_[c] = false;
    }
  }
}

// What is there when a row is first seen has not changed.
void LiveModel::TakeRow(Row& row, const day::QuoteRow& values, Time now) {
  const bool is_first = row.cells.empty();
  row.cells.resize(headers_.size());
  const double price_before = NumberAt(row, price_);
  const auto take = [&](std::size_t column, const day::QuoteValue& value, const std::string& text) {
    Cell& cell = row.cells[column];
    if (cell.value == value) return;
    cell.value = value;
    cell.text = Visible(text);
    widest_[column] = std::max(widest_[column], ColumnsOf(cell.text));
    if (!is_first) cell.changed = now;
    if (!is_first || column > 0) row.changed = now;
  };
  const std::vector<std::string> texts =
      price_format_.empty() ? day::TextsOf(values) : ShownQuote(columns_, values, price_format_);
  std::size_t from = 0;
  for (std::size_t c = 0; c < headers_.size(); ++c) {
    if (c == percent_ || from >= values.size()) continue;
    take(c, values[from], texts[from]);
    ++from;
  }
  if (percent_ != kNone) {
    const day::QuoteValue percent = PercentOf(row.cells);
    take(percent_, percent, percent.ToText());
  }

  const double price = NumberAt(row, price_);
  if (change_ != kNone && !row.cells[change_].value.IsNothing()) {
    row.sign = SignOf(NumberAt(row, change_));
  } else if (price_before != 0 && price != price_before) {
    row.sign = SignOf(price - price_before);
  }
}

double LiveModel::NumberAt(const Row& row, std::size_t column) {
  return column == kNone ? 0 : row.cells[column].value.ToNumber();
}

// Of the price of the day before, which is the last one without the change.
day::QuoteValue LiveModel::PercentOf(const std::vector<Cell>& cells) const {
  const day::QuoteValue& change = cells[change_].value;
  const day::QuoteValue& price = cells[price_].value;
  const double before = price.ToNumber() - change.ToNumber();
  const double percent = change.ToNumber() / before * 100;
  if (change.IsNothing() || price.IsNothing() || before <= 0 || !(std::fabs(percent) < kGreatestPercent))
    return {};
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%+.2f", percent);
  return day::QuoteValue::Number(percent, text.data());
}

// --- What a person presses ------------------------------------------------------------------------------

bool LiveModel::Press(const terminal::Key& key) {
  using Kind = terminal::Key::Kind;
  switch (key.kind) {
    case Kind::Up:
      first_row_ -= std::min<std::size_t>(first_row_, 1);
      return true;
    case Kind::Down:
      ++first_row_;
      return true;
    case Kind::PageUp:
      first_row_ -= std::min(first_row_, page_);
      return true;
    case Kind::PageDown:
      first_row_ += page_;
      return true;
    case Kind::Home:
      first_row_ = 0;
      return true;
    case Kind::End:
      first_row_ = rows_.size();
      return true;
    case Kind::Left:
      if (first_column_ > 1) --first_column_;
      return true;
    case Kind::Right:
      ++first_column_;
      return true;
    case Kind::Character:
      break;
  }
  return PressCharacter(key.character);
}

bool LiveModel::PressCharacter(char character) {
  switch (character) {
    case '?':
      shows_help_ = !shows_help_;
      return true;
    case '\033':
      shows_help_ = false;
      return true;
    case '>':
      SortBy(1);
      return true;
    case '<':
      SortBy(-1);
      return true;
    case 'r':
      downwards_ = !downwards_;
      return true;
    case 't':
      sorted_by_ = kNone;
      downwards_ = false;
      return true;
    default:
      return false;
  }
}

void LiveModel::SortBy(int step) {
  const std::size_t count = headers_.size();
  if (count == 0) return;
  if (sorted_by_ == kNone) {
    sorted_by_ = step > 0 ? 0 : count - 1;
  } else {
    sorted_by_ = (sorted_by_ + count + static_cast<std::size_t>(step)) % count;
  }
}

// --- What is seen ---------------------------------------------------------------------------------------

Picture LiveModel::Draw(const terminal::ScreenSize& size, Time now, const std::vector<std::string>& about) {
  if (size.lines == 0 || size.columns == 0) return {};
  if (shows_help_) return Help(size);

  const std::size_t below =
      size.lines < 3 ? 0 : std::min(about.size(), std::max<std::size_t>(size.lines / 4, 1));
  page_ = std::max<std::size_t>(size.lines - std::min(size.lines, below + 1), 1);
  first_row_ = std::min(first_row_, rows_.size() - std::min(rows_.size(), page_));
  const std::vector<std::size_t> order = Order();
  const std::vector<std::size_t> columns = ColumnsThatFit(size.columns);

  Picture picture{HeaderLine(columns)};
  for (std::size_t r = first_row_; r < std::min(order.size(), first_row_ + page_); ++r)
    picture.push_back(LineOf(rows_[order[r]], columns, now));
  picture.resize(size.lines - std::min(size.lines - 1, below));
  for (std::size_t i = 0; i < below; ++i) {
    const std::string position = i + 1 == below ? Position(columns.empty() ? 0 : columns.back()) : "";
    const std::size_t room = size.columns - std::min(size.columns - 1, ColumnsOf(position));
    std::string text = Visible(about[i]);
    if (ColumnsOf(text) > room) text = terminal::Shortened(text, room);
    text += position;
    picture.push_back({i == 0 ? PieceOf(Fitted(text, size.columns, false), Reversed()) : PieceOf(text)});
  }
  picture.resize(size.lines);
  for (PictureLine& line : picture) Cut(line, size.columns);
  return picture;
}

std::vector<std::size_t> LiveModel::Order() const {
  std::vector<std::size_t> order(rows_.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  if (sorted_by_ != kNone) {
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return IsBefore(rows_[a], rows_[b]); });
  } else if (downwards_) {
    std::reverse(order.begin(), order.end());
  }
  return order;
}

// What is empty stands behind the rest, whichever way.
bool LiveModel::IsBefore(const Row& a, const Row& b) const {
  const Cell& one = a.cells[sorted_by_];
  const Cell& other = b.cells[sorted_by_];
  if (one.text.empty() || other.text.empty()) return !one.text.empty() && other.text.empty();
  const int order = is_numeric_[sorted_by_] ? SignOf(one.value.ToNumber() - other.value.ToNumber())
                                            : StrComp(one.text, other.text, Compare::Text);
  return downwards_ ? order > 0 : order < 0;
}

// The first column, and of the others as many as there is room for from the one that was scrolled to.
std::vector<std::size_t> LiveModel::ColumnsThatFit(std::size_t room) {
  widths_.assign(headers_.size(), 0);
  std::vector<std::size_t> columns;
  std::size_t used = ColumnsOf(kFreshMark) + 1;
  first_column_ = std::clamp<std::size_t>(first_column_, 1, std::max<std::size_t>(headers_.size(), 2) - 1);
  for (std::size_t c = 0; c < headers_.size(); c = c == 0 ? first_column_ : c + 1) {
    widths_[c] = std::min(widest_[c], kWidestCell);
    const std::size_t width = widths_[c] + (columns.empty() ? 0 : kColumnGap);
    if (used + width > room && !columns.empty()) break;
    used += width;
    columns.push_back(c);
  }
  if (!columns.empty() && used > room)
    widths_[columns.front()] -= std::min(widths_[columns.front()] - 1, used - room);
  return columns;
}

PictureLine LiveModel::HeaderLine(const std::vector<std::size_t>& columns) const {
  TextStyle style;
  style.bold = true;
  std::string text(ColumnsOf(kFreshMark) + 1, ' ');
  for (const std::size_t c : columns) {
    const std::string mark = c != sorted_by_ ? "" : downwards_ ? "v" : "^";
    const bool to_the_right = c < is_numeric_.size() && is_numeric_[c] && c > 0;
    if (c != columns.front()) text.append(kColumnGap, ' ');
    text += Fitted(headers_[c] + mark, widths_[c], to_the_right);
  }
  return {PieceOf(text, style)};
}

PictureLine LiveModel::LineOf(const Row& row, const std::vector<std::size_t>& columns, Time now) const {
  const auto is_fresh = [&](const std::optional<Time>& changed) {
    return changed && now - *changed < kFresh;
  };
  const bool is_old = row.changed && now - *row.changed >= kOld;
  PictureLine line{PieceOf(std::string(is_fresh(row.changed) ? kFreshMark : is_old ? kOldMark : " ") + " ")};
  for (const std::size_t c : columns) {
    TextStyle style;
    style.dim = is_old;
    style.bold = is_fresh(row.cells[c].changed);
    if (c == price_ || c == change_ || c == percent_)
      style.tone = row.sign > 0 ? Tone::Up : row.sign < 0 ? Tone::Down : Tone::Plain;
    if (c != columns.front()) line.push_back(PieceOf(std::string(kColumnGap, ' ')));
    line.push_back(PieceOf(Fitted(row.cells[c].text, widths_[c], is_numeric_[c] && c > 0), style));
  }
  return line;
}

Picture LiveModel::Help(const terminal::ScreenSize& size) const {
  Picture picture;
  for (const std::string_view line : kHelp) {
    if (picture.size() == size.lines) break;
    picture.push_back({PieceOf(ColumnsOf(line) > size.columns ? terminal::Shortened(line, size.columns)
                                                              : std::string(line))});
  }
  picture.resize(size.lines);
  return picture;
}

std::string LiveModel::Position(std::size_t last_column) const {
  std::string text;
  if (rows_.size() > page_) {
    const std::size_t last = std::min(rows_.size(), first_row_ + page_);
    text += "  rows " + std::to_string(first_row_ + 1) + " to " + std::to_string(last) + " of " +
            std::to_string(rows_.size());
  }
  if (first_column_ > 1) text += "  <- columns";
  if (last_column + 1 < headers_.size()) text += "  columns ->";
  return text;
}

}  // namespace mirelo::app
