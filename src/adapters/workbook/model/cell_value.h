#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace mirelo::workbook {

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
  explicit CellValue(double number) : value_(number) {}
  explicit CellValue(bool boolean) : value_(boolean) {}
  explicit CellValue(CellError error) : value_(error) {}
  // An empty text is no content.
  static CellValue OfText(std::string text);
  static CellValue NotCalculated();

  CellValue(CellValue&&) = default;
  CellValue& operator=(CellValue&&) = default;
  CellValue Copy() const;

  bool IsEmpty() const { return std::holds_alternative<std::monostate>(value_); }
  // Null when this holds another kind.
  const double* IfNumber() const { return std::get_if<double>(&value_); }
  const bool* IfBoolean() const { return std::get_if<bool>(&value_); }
  const CellError* IfError() const { return std::get_if<CellError>(&value_); }
  const std::string* IfText() const;
  bool IsNotCalculated() const { return std::holds_alternative<Unknown>(value_); }

  friend bool operator==(const CellValue& a, const CellValue& b);

 private:
  using Text = std::unique_ptr<const std::string>;  // keeps a cell at 16 bytes
  struct Unknown {
    friend bool operator==(const Unknown&, const Unknown&) = default;
  };
  std::variant<std::monostate, double, bool, CellError, Text, Unknown> value_;
};

}  // namespace mirelo::workbook
