#include "app/output/shown_quote.h"

#include <algorithm>
#include <cstddef>

#include "automation/text.h"
#include "snapshot/column_vocabulary.h"
#include "spreadsheet/display/displayed_text.h"

namespace mirelo::app {

namespace {

bool IsPrice(const std::string& column) {
  const ColumnRow* const row = FindColumn(UCase(column));
  return row != nullptr && (row->kind == ColumnKind::Price || row->kind == ColumnKind::Change);
}

}  // namespace

std::vector<std::string> ShownQuote(const std::vector<std::string>& columns, const day::QuoteRow& row,
                                    const std::string& price_format) {
  std::vector<std::string> texts = day::TextsOf(row);
  for (std::size_t c = 0; c < std::min(columns.size(), row.size()); ++c) {
    if (row[c].kind() == day::QuoteValue::Kind::Number && IsPrice(columns[c]))
      texts[c] = spreadsheet::NumberInSection(row[c].ToNumber(), price_format);
  }
  return texts;
}

}  // namespace mirelo::app
