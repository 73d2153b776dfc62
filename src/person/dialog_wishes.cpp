#include "person/dialog_wishes.h"

#include <algorithm>

#include "automation/text.h"
#include "snapshot/column_vocabulary.h"

namespace mirelo {

namespace {

void Assume(DialogWishes& wishes, const char* key, const char* value) {
  if (std::ranges::find(wishes.settings, key, &DialogWishes::Setting::key) != wishes.settings.end()) return;
  wishes.settings.push_back({key, value});
}

}  // namespace

std::vector<std::string> HistoryFields(const std::string& text) {
  if (text.empty()) return {"Last", "LastVolume", "Time"};
  std::vector<std::string> fields = Split(text, ",");
  for (std::string& field : fields) {
    field = Trim(field);
    if (ColumnCode(UCase(field)) == kUnknownColumn)
      throw Unfulfilled("there is no field \"" + field + "\" of a history");
  }
  return fields;
}

void AddWhatHistoriesNeed(DialogWishes& wishes) {
  if (wishes.charts && wishes.history.empty()) wishes.history = HistoryFields("");
  if (wishes.charts) {
    for (const char* const needed : {"Last", "LastVolume"}) {
      const bool is_there =
          std::ranges::any_of(wishes.history, [&](const auto& field) { return EqualText(field, needed); });
      if (!is_there) wishes.history.emplace_back(needed);
    }
    Assume(wishes, "BuildCharts", "1");
  }
  if (!wishes.history.empty()) Assume(wishes, "VerticalTable", "1");
}

}  // namespace mirelo
