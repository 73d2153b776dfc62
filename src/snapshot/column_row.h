#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/cQTData.h"
#include "core/property.h"

namespace mirelo {

// What a column holds, which says how texts are read and cells are formatted.
enum class ColumnKind : std::uint8_t { Ticker, Date, Time, Price, Change, Count, Mark };

// Where a column stands unless the user has moved it: the setting that lists it, and its place in ListRight,
// which is in the order of the columns on the sheet.
struct ColumnPlace {
  int right = 0;  // from 1; 0 in ListLeft, which is in the order of the codes
};
constexpr ColumnPlace ListRight(int place) { return {place}; }
inline constexpr ColumnPlace kListLeft{};

// When a quote that was asked for counts as a new one, and so gets a row of the history: by its value in this
// column, compared with the quote before.
enum class MakesRow : std::uint8_t {
  Never,        // the value says who is quoted, or when it was asked
  WhenOther,    // when it differs
  WhenNotZero,  // the value itself is a difference to the quote before
};

// Which property of a streamed quote a column shows, and the field of the record that brings it.
struct StreamedField {
  constexpr StreamedField() = default;  // none
  constexpr StreamedField(QuoteField carried, Property<double> cQTData::*shown)
      : field(carried), number(shown) {}
  constexpr StreamedField(QuoteField carried, Property<std::int32_t> cQTData::*shown)
      : field(carried), quantity(shown) {}
  constexpr StreamedField(QuoteField carried, Property<std::string> cQTData::*shown)
      : field(carried), text(shown) {}

  constexpr bool IsNone() const { return number == nullptr && quantity == nullptr && text == nullptr; }

  QuoteField field{};
  // One of these.
  Property<double> cQTData::*number = nullptr;
  Property<std::int32_t> cQTData::*quantity = nullptr;
  Property<std::string> cQTData::*text = nullptr;
};
// The wire has the field, but it is read and dropped.
inline constexpr StreamedField kDropped{};

// Whether a vertical table can show a column.
enum InHistories : bool { kNotInHistories, kInHistories };

// A row of the table of columns (column_vocabulary.h). One that does not fit together does not compile.
struct ColumnRow {
  std::string_view name;        // in lists, headers and settings
  std::string_view upper_case;  // what names are compared with
  ColumnPlace place;
  ColumnKind kind;
  StreamedField streamed;
  int reading;  // its place, from 1, where all columns of a stream are printed in an order for reading
  MakesRow makes_row;
  InHistories in_histories;
  std::string_view meaning;

  constexpr ColumnRow(std::string_view its_name, std::string_view its_upper_case, ColumnPlace its_place,
                      ColumnKind its_kind, StreamedField its_field, int its_reading, MakesRow makes,
                      InHistories histories, std::string_view its_meaning)
      : name(its_name),
        upper_case(its_upper_case),
        place(its_place),
        kind(its_kind),
        streamed(its_field),
        reading(its_reading),
        makes_row(makes),
        in_histories(histories),
        meaning(its_meaning) {
    if (name.empty() || meaning.empty()) throw "a column has a name and a meaning";
    if (name.size() != upper_case.size()) throw "the upper-case form is that of the name";
    for (std::size_t i = 0; i < name.size(); ++i) {
      const char c = name[i];
      if (c == ',') throw "names are joined by commas";
      if (upper_case[i] != (c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c))
        throw "the upper-case form is that of the name";
    }
    switch (kind) {
      case ColumnKind::Price:
      case ColumnKind::Change:
        if (streamed.number == nullptr) throw "a price is streamed as a double";
        break;
      case ColumnKind::Count:
        if (streamed.quantity == nullptr) throw "a count is streamed as an integer";
        break;
      case ColumnKind::Ticker:
      case ColumnKind::Date:
      case ColumnKind::Time:
        if (streamed.text == nullptr) throw "a text is streamed as one";
        break;
      case ColumnKind::Mark:
        break;
    }
  }
};

}  // namespace mirelo
