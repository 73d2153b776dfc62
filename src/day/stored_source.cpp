#include "day/stored_source.h"

#include <memory>

#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "core/setting_names.h"
#include "streaming/cQTStreaming.h"

namespace mirelo::day {

std::string StoredSource() {
  return mGlobal::AppSettings().GetSetting(catalogue::kFirstSource, catalogue::kFirstSourceKey, "").ToText();
}

std::string StreamerFileOf(const std::string& source) {
  return std::make_shared<cQTStreaming>()->GiveStreamerFile(source);
}

}  // namespace mirelo::day
