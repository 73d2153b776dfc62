#include <cstdint>
#include <string>

#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/cMirelo.h"
#include "core/mGlobal.h"
#include "diagnostics/routine.h"

namespace mirelo {

namespace {

constexpr std::int16_t kDefaultHttpPort = 16239;

Variant SettingOr(const char* key, const Variant& if_absent) {
  return mGlobal::AppSettings().GetSetting("Settings", key, if_absent);
}

}  // namespace

Variant cMirelo::GetPortWebAddress(std::int16_t& Port, std::string& WebAddress) {
  Routine("Mirelo.cMirelo.GetPortWebAddress", [&](Frame& frame) {
    STEP(Port = SettingOr("HTTPPort", kDefaultHttpPort).ToInt16());
    STEP(WebAddress = SettingOr("Webaddress", "127.0.0.1").ToText());
    frame.pop();
  });
  return Variant();
}

Variant cMirelo::GetDisplacementHourMinute(std::int32_t& Hour, std::int32_t& Minute) {
  Routine("Mirelo.cMirelo.GetDisplacementHourMinute", [&](Frame& frame) {
    STEP(Hour = SettingOr("DisplacementHour", "0").ToInt32());
    STEP(Minute = SettingOr("DisplacementMinute", "0").ToInt32());
    frame.pop();
  });
  return Variant();
}

}  // namespace mirelo
