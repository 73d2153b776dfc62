#include "spreadsheet/typed/cell_input.h"

#include <cmath>
#include <string>
#include <string_view>

#include "automation/ansi.h"
#include "automation/date.h"
#include "spreadsheet/calendar.h"
#include "spreadsheet/errors.h"
#include "spreadsheet/limits.h"
#include "spreadsheet/refusals.h"
#include "spreadsheet/text_units.h"

namespace mirelo::spreadsheet {

namespace {

bool IsDate(double serial) { return serial >= 0 && serial < kLastDay + 1; }

TypedValue NumberInput(double number) {
  if (!std::isfinite(number)) return {CellValue(CellError::Number), {}};
  return {CellValue(number), {}};
}

TypedValue DateInput(double serial) {
  const bool has_time = serial != std::floor(serial);
  const bool has_day = serial >= 1;
  const std::string_view format = !has_time ? "m/d/yyyy" : has_day ? "m/d/yyyy h:mm" : "h:mm:ss AM/PM";
  return {CellValue(serial), format};
}

TypedValue TextInput(std::string_view text, FormatKind kind, const RegionalFormat& regional) {
  return kind == FormatKind::Text ? TextAsIs(text) : TypedText(text, regional);
}

std::string_view AsStored(std::string_view text) { return text.substr(text.starts_with('\'') ? 1 : 0); }

bool NeedsCleaning(std::string_view text) {
  return !IsAscii(text) || text.find('\0') != std::string_view::npos;
}

}  // namespace

void CheckCellInput(const Variant& value) {
  if (const std::string* text = value.IfText()) {
    if (text->size() > kLongestText && Utf16Length(AsStored(*text)) > kLongestText) {
      throw Refusals::CellTextTooLong();
    }
  } else if (value.type() == Variant::Type::Date) {
    if (!IsDate(value.ToDouble())) throw Refused("A cell's date must lie between 1900 and 9999.");
  } else if (value.IsArray() || value.IsObject()) {
    throw Errors::TypeMismatch();
  }
}

TypedValue CellInput(const Variant& value, FormatKind kind, const RegionalFormat& regional) {
  switch (value.type()) {
    case Variant::Type::Empty:
      return {};
    case Variant::Type::Boolean:
      return {CellValue(value.ToBoolean()), {}};
    case Variant::Type::Date:
      return DateInput(value.ToDouble());
    case Variant::Type::String: {
      const std::string& text = *value.IfText();
      return NeedsCleaning(text) ? TextInput(CleanText(text), kind, regional)
                                 : TextInput(text, kind, regional);
    }
    default:
      return NumberInput(value.ToDouble());
  }
}

Variant CellOutput(const CellValue& value, FormatKind kind) {
  if (const double* number = value.IfNumber()) {
    if (kind == FormatKind::Date && IsDate(*number)) return Date{*number};
    return *number;
  }
  if (const std::string* text = value.IfText()) return *text;
  if (const bool* boolean = value.IfBoolean()) return *boolean;
  if (const CellError* error = value.IfError()) return ErrorText(*error);
  return {};
}

}  // namespace mirelo::spreadsheet
