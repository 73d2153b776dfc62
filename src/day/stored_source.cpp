#include "day/stored_source.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include "automation/runtime_error.h"
#include "core/CAppSettings.h"
#include "core/known_setting.h"
#include "core/mGlobal.h"
#include "core/setting_names.h"
#include "streaming/cQTStreaming.h"
#include "streaming/first_sources.h"
#include "streaming/source_names.h"

namespace mirelo::day {

// The dialog lets nobody choose an empty name, so where one is stored nothing was chosen either.
std::string ChosenSource() {
  constexpr std::string_view kDefault =
      catalogue::DialogDefault(catalogue::kFirstSource, catalogue::kFirstSourceKey);
  std::string source =
      mGlobal::AppSettings().GetSetting(catalogue::kFirstSource, catalogue::kFirstSourceKey, "").ToText();
  return source.empty() ? std::string(kDefault) : source;
}

std::string StreamerFileOf(const std::string& source) {
  std::string file = std::make_shared<cQTStreaming>()->GiveStreamerFile(source);
  if (!file.empty()) return file;
  const auto* const row = std::ranges::find_if(
      kFirstSources, [&](const QuoteSourceRow& first) { return IsSameSource(first.text, source); });
  if (row == kFirstSources.end())
    throw RuntimeError(5, "No quote source is named \"" + source + "\"; choose one in the settings");
  return std::string(row->file);
}

}  // namespace mirelo::day
