#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace mirelo::spreadsheet {

// An error that a cell holds in place of a value.
enum class CellError : std::uint8_t { Null, DivisionByZero, Value, Reference, Name, Number, NotAvailable };

// "#N/A" and the like.
std::string_view ErrorText(CellError error);
std::optional<CellError> ParseCellError(std::string_view text);  // letters of either case

// What one cell holds: nothing, a number (dates are numbers), a boolean, an error, a text that is not empty,
// or the unknown result of a formula.
class CellValue {
 public:
  CellValue() = default;
  explicit CellValue(double number) : kind_(Kind::Number) { content_.number = number; }
  explicit CellValue(bool boolean) : kind_(Kind::Boolean) { content_.boolean = boolean; }
  explicit CellValue(CellError error) : kind_(Kind::Error) { content_.error = error; }
  // An empty text is no content.
  static CellValue OfText(std::string text);
  static CellValue NotCalculated();

  CellValue(CellValue&& other) noexcept
      : kind_(std::exchange(other.kind_, Kind::Empty)), content_(other.content_) {}
  CellValue& operator=(CellValue&& other) noexcept {
    std::swap(kind_, other.kind_);
    std::swap(content_, other.content_);
    return *this;
  }
  ~CellValue() {
    if (kind_ == Kind::Text) delete content_.text;
  }
  CellValue Copy() const;

  bool IsEmpty() const { return kind_ == Kind::Empty; }
  // Null when this holds another kind.
  const double* IfNumber() const { return kind_ == Kind::Number ? &content_.number : nullptr; }
  const bool* IfBoolean() const { return kind_ == Kind::Boolean ? &content_.boolean : nullptr; }
  const CellError* IfError() const { return kind_ == Kind::Error ? &content_.error : nullptr; }
  const std::string* IfText() const { return kind_ == Kind::Text ? content_.text : nullptr; }
  bool IsNotCalculated() const { return kind_ == Kind::NotCalculated; }

  friend bool operator==(const CellValue& a, const CellValue& b);

 private:
  enum class Kind : std::uint8_t { Empty, Number, Boolean, Error, Text, NotCalculated };
  // Moved by the million when columns grow and rows move up, so moving it takes no look at its kind.
  union Content {
    double number;
    bool boolean;
    CellError error;
    const std::string* text;  // owned
  };

  Kind kind_ = Kind::Empty;
  Content content_{};
};
static_assert(sizeof(CellValue) == 16);

}  // namespace mirelo::spreadsheet
