// What docs/settings.md says of defaults is what the catalogue says.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/setting_names.h"
#include "core/settings_catalogue.h"
#include "core/settings_table.h"
#include "support/file_text.h"

namespace mirelo {
namespace {

using ::testing::HasSubstr;

// Its words, wherever its lines end.
std::string Page() {
  std::string page;
  for (const char c : testing::TextOfFile(MIRELO_SOURCE_DIR "/docs/settings.md")) {
    const bool is_blank = std::isspace(static_cast<unsigned char>(c)) != 0;
    if (!is_blank) page += c;
    if (is_blank && !page.ends_with(' ')) page += ' ';
  }
  return page;
}

const Setting& SettingCalled(std::string_view key) { return *FindSetting(catalogue::kSettings, key); }

std::string OnOrOff(std::string_view tick) { return tick == "1" ? "on" : "off"; }

TEST(SettingsPage, TellsTheDefaultsOfThoseThatHaveTwo) {
  std::vector<std::string_view> with_two;
  for (const Setting& setting : AllSettings()) {
    if (setting.facade_default && setting.dialog_default && setting.facade_default != setting.dialog_default)
      with_two.push_back(setting.key);
  }
  ASSERT_THAT(with_two, ::testing::ElementsAre("Seconds", "BuildCharts"));
  const Setting& seconds = SettingCalled("Seconds");
  const Setting& charts = SettingCalled("BuildCharts");
  const auto told = [](std::string_view number, std::string_view tick) {
    return std::string(number) + " seconds and charts " + OnOrOff(tick);
  };
  const std::string page = Page();
  EXPECT_THAT(page, HasSubstr("Two settings have two defaults"));
  EXPECT_THAT(page, HasSubstr("the macros take " + told(*seconds.facade_default, *charts.facade_default) +
                              ", while the dialog proposes " +
                              told(*seconds.dialog_default, *charts.dialog_default) + "."));
}

TEST(SettingsPage, TellsWhatChartsTakeForGreyOut) {
  const Setting& grey_out = SettingCalled("GreyOut");
  ASSERT_EQ(grey_out.facade_default, grey_out.dialog_default);
  const std::string usual(*grey_out.facade_default);
  EXPECT_THAT(Page(), HasSubstr("`GreyOut` has a third reader: macros and dialog take " + usual +
                                ", but a chart that is built while nothing is stored is built as with " +
                                std::string(catalogue::kGreyOutOfNewCharts) +
                                ", and restoring the default writes " + usual + " for all three."));
}

TEST(SettingsPage, TellsWhichHaveNone) {
  const std::map<std::string_view, std::string> names{{catalogue::kSources, "files of quote sources"},
                                                      {catalogue::kWatchLists, "watch lists"},
                                                      {catalogue::kWindows, "corners of windows"}};
  std::vector<std::string> without;
  for (const Setting& setting : AllSettings()) {
    if (DefaultValue(setting, setting.key)) continue;
    ASSERT_TRUE(names.contains(setting.section)) << setting.section << " " << setting.key;
    const std::string& name = names.at(setting.section);
    if (std::ranges::find(without, name) == without.end()) without.push_back(name);
  }
  ASSERT_EQ(without.size(), 3U);
  EXPECT_THAT(Page(), HasSubstr("Settings without a default cannot be deleted: " + without[0] + ", " +
                                without[1] + ", and " + without[2] + " ("));
}

}  // namespace
}  // namespace mirelo
