#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "automation/date.h"
#include "automation/variant.h"

namespace mirelo::day {

// One value of a quote, as a cell takes it: a number, a moment (a date or a time of day), a text, or nothing.
// A number or a moment that came as a text keeps that text, so that it can be shown as it was written.
class QuoteValue {
 public:
  enum class Kind : std::uint8_t { Nothing, Number, Moment, Text };

  QuoteValue() = default;
  // A number that is infinite or none at all is the text of it.
  explicit QuoteValue(double number) { Set(number); }
  static QuoteValue Number(double number, std::string text) {
    return {Kind::Number, number, std::move(text)};
  }
  static QuoteValue Moment(Date date, std::string text) {
    return {Kind::Moment, date.serial, std::move(text)};
  }
  // An empty text is nothing.
  static QuoteValue Text(std::string text) {
    return {text.empty() ? Kind::Nothing : Kind::Text, 0, std::move(text)};
  }

  void Set(double number);

  Kind kind() const { return kind_; }
  bool IsNothing() const { return kind_ == Kind::Nothing; }
  // The text of a text, and that which a number or a moment came as.
  const std::string& text() const { return text_; }

  // The number; of anything else the number at the beginning of its text, 0 where there is none.
  double ToNumber() const;
  // The number, or a moment's serial number, of these kinds.
  double Serial() const { return number_; }
  // As it came; a number that came as such as automation prints numbers.
  std::string ToText() const;
  // What is written for it into a cell, where text stays text, whatever a spreadsheet would make of it.
  Variant ToCell() const;

  // Numbers and moments are compared as such, however they were written.
  friend bool operator==(const QuoteValue& a, const QuoteValue& b) {
    return a.kind_ == b.kind_ && a.number_ == b.number_ && (a.kind_ != Kind::Text || a.text_ == b.text_);
  }

 private:
  QuoteValue(Kind kind, double number, std::string text)
      : kind_(kind), number_(number), text_(std::move(text)) {}

  Kind kind_ = Kind::Nothing;
  double number_ = 0;  // of a moment its serial number
  std::string text_;
};

// What the texts of a column are read as. What cannot be read so stays text. Times of day come as the machine
// writes them, so any mark may part their hours, minutes and seconds: "20.15.07" is no date.
enum class Reading : std::uint8_t { AsText, AsMoment, AsTime, AsNumber };

// How the texts of the column with this name, in any case, are read.
Reading ReadingOf(const std::string& column);

// The longest text of a quote, in characters, that a cell is given: half of what it can hold, because some
// characters take several in a file, which has no more room than a cell.
inline constexpr std::int32_t kLongestText = 16'383;

// Whether a text is longer than that; it must be cut before it is written.
bool IsTooLong(const std::string& text);

// The value of a text that has come. One that is too long for a cell stays text until it is cut.
QuoteValue ReadValue(Reading reading, std::string text);

}  // namespace mirelo::day
