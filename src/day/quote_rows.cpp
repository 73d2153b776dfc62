#include "day/quote_rows.h"

#include "automation/text.h"
#include "core/known_setting.h"
#include "core/mGlobal.h"

namespace mirelo::day {

std::vector<std::string> TextsOf(const QuoteRow& row) {
  std::vector<std::string> texts;
  texts.reserve(row.size());
  for (const QuoteValue& value : row) texts.push_back(value.ToText());
  return texts;
}

std::vector<std::string> VisibleColumns() {
  return Split(FacadeSetting("ListRight").In(mGlobal::AppSettings()).ToText(), ",");
}

}  // namespace mirelo::day
