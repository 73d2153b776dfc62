#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "day/quote_rows.h"
#include "terminal/key.h"
#include "terminal/picture.h"

namespace mirelo::app {

// A table of quotes as a person looks at it on a screen: what is known of each ticker and since when, where
// the person has scrolled to, and by which column the rows are sorted. It knows no terminal and no clock.
class LiveModel {
 public:
  using Time = std::chrono::steady_clock::time_point;

  static constexpr std::chrono::seconds kFresh{1};  // how long a change is marked
  static constexpr std::chrono::minutes kOld{1};    // without a change for so long, a row is marked as old

  // Prices are shown in the format, which is cMirelo::DecimalPlacesFormat; without one as they came.
  explicit LiveModel(std::vector<std::string> columns, std::string price_format = "");

  // What is known now. Rows are added and never go.
  void Take(const day::QuoteRows& rows, Time now);

  // Scrolls, sorts or shows the help, as the key says. False for a key that has no meaning here.
  bool Press(const terminal::Key& key);

  // The table for so much room, and below it these lines about the day, as far as there is room for them.
  // What the person scrolled to is kept in bounds.
  terminal::Picture Draw(const terminal::ScreenSize& size, Time now, const std::vector<std::string>& about);

 private:
  struct Cell {
    day::QuoteValue value;
    std::string text;  // made visible
    std::optional<Time> changed;
  };
  struct Row {
    std::vector<Cell> cells;
    std::optional<Time> changed;
    int sign = 0;  // of the change, or else of the price's last move
  };

  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  std::size_t ColumnNamed(const std::string& header) const;
  void TakeRow(Row& row, const day::QuoteRow& values, Time now);
  static double NumberAt(const Row& row, std::size_t column);
  day::QuoteValue PercentOf(const std::vector<Cell>& cells) const;
  bool PressCharacter(char character);
  void SortBy(int step);
  std::vector<std::size_t> Order() const;
  bool IsBefore(const Row& a, const Row& b) const;
  std::vector<std::size_t> ColumnsThatFit(std::size_t room);
  terminal::PictureLine HeaderLine(const std::vector<std::size_t>& columns) const;
  terminal::PictureLine LineOf(const Row& row, const std::vector<std::size_t>& columns, Time now) const;
  terminal::Picture Help(const terminal::ScreenSize& size) const;
  std::string Position(std::size_t last_column) const;

  std::vector<std::string> columns_;
  std::string price_format_;
  std::vector<std::string> headers_;  // with a column of our own
  std::size_t price_;
  std::size_t change_;
  std::size_t percent_;              // a column of our own; kNone where it cannot be told
  std::vector<bool> is_numeric_;     // by the columns
  std::vector<std::size_t> widest_;  // what each has ever held: columns that move are hard to read
  std::vector<Row> rows_;

  std::size_t first_row_ = 0;
  std::size_t first_column_ = 1;  // the first shown of those that scroll; column 0 is always shown
  std::size_t page_ = 1;          // rows of the last picture
  std::size_t sorted_by_ = kNone;
  bool downwards_ = false;
  bool shows_help_ = false;
  std::vector<std::size_t> widths_;  // of the last picture
};

}  // namespace mirelo::app
