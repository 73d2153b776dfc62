// What the guide says of settings that are not stored is what the catalogue says.

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

#include "core/setting_names.h"
#include "core/settings_catalogue.h"
#include "core/settings_table.h"

namespace mirelo {
namespace {

// The rows of the guide's table of settings, cell by cell.
std::vector<std::vector<std::string>> SettingsInGuide() {
  std::ifstream guide(MIRELO_SOURCE_DIR "/docs/guide.md");
  std::vector<std::vector<std::string>> rows;
  std::string line;
  while (std::getline(guide, line) && line != "| Setting | Meaning | Without it |") {
  }
  std::getline(guide, line);  // the rule below the header
  while (std::getline(guide, line) && line.starts_with("| ")) {
    std::vector<std::string> cells;
    for (std::size_t at = 2; at < line.size();) {
      const std::size_t end = line.find(" |", at);
      cells.push_back(line.substr(at, end - at));
      at = end + 3;
    }
    rows.push_back(cells);
  }
  return rows;
}

// The names that stand in backticks.
std::vector<std::string> KeysIn(const std::string& cell) {
  std::vector<std::string> keys;
  for (std::size_t at = cell.find('`'); at != std::string::npos; at = cell.find('`', at)) {
    const std::size_t end = cell.find('`', at + 1);
    keys.push_back(cell.substr(at + 1, end - at - 1));
    at = end + 1;
  }
  return keys;
}

// As people read it: with a blank behind each comma, and a zone by its name alone.
std::string Shown(const Setting& setting) {
  std::string text(setting.facade_default.value_or(setting.dialog_default.value_or("")));
  if (text.starts_with('(')) text.erase(0, text.find(") ") + 2);
  for (std::size_t at = 0; (at = text.find(',', at)) != std::string::npos; at += 2) text.insert(at + 1, " ");
  return text;
}

TEST(SettingsOfTheGuide, HaveTheDefaultsOfTheCatalogue) {
  const auto rows = SettingsInGuide();
  EXPECT_GE(rows.size(), 8U);
  for (const auto& row : rows) {
    ASSERT_EQ(row.size(), 3U);
    std::string defaults;
    for (const std::string& key : KeysIn(row[0])) {
      const Setting* const setting = FindSetting(catalogue::kSettings, key);
      ASSERT_NE(setting, nullptr) << key;
      if (!defaults.empty()) defaults += ", ";
      defaults += Shown(*setting);
    }
    const Setting& first = *FindSetting(catalogue::kSettings, KeysIn(row[0]).front());
    const bool differs = first.facade_default && first.dialog_default != first.facade_default;
    if (differs) defaults += "; the dialog proposes " + std::string(first.dialog_default.value());
    EXPECT_EQ(row[2], defaults) << row[0];
  }
}

}  // namespace
}  // namespace mirelo
