#include "app/live_table.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "app/text_table.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Out;

namespace {

constexpr char kClearScreen[] = "\033[H\033[2J";
constexpr std::chrono::milliseconds kRedrawPace{250};

}  // namespace

LiveTable::LiveTable(host::MessageLoop& loop, const std::vector<std::string>& columns,
                     const day::QuoteRows& rows, std::function<std::string()> status)
    : loop_(loop),
      columns_(columns),
      rows_(rows),
      status_(std::move(status)),
      price_(
          static_cast<std::size_t>(std::ranges::find(columns, TextTable::kPriceHeader) - columns.begin())) {
  Redraw();
}

LiveTable::~LiveTable() { loop_.StopTimer(timer_); }

void LiveTable::Redraw() {
  moves_.resize(rows_.size());
  TextTable table(columns_);
  for (std::size_t row = 0; row < rows_.size(); ++row)
    table.AddRow(day::TextsOf(rows_[row]), DirectionOf(row));
  Out() << kClearScreen << table.ToText(true) << "\n" << status_() << "\n";
  Out().Flush();
  loop_.StopTimer(timer_);
  timer_ = loop_.StartTimer(kRedrawPace, [this] { Redraw(); });
}

int LiveTable::DirectionOf(std::size_t row) {
  if (price_ == columns_.size()) return 0;
  Move& move = moves_[row];
  const double price = rows_[row][price_].ToNumber();
  const double before = std::exchange(move.price, price);
  if (before != 0 && price != before) move.direction = price > before ? 1 : -1;
  return move.direction;
}

}  // namespace mirelo::app
