#include <cstdint>
#include <string>

#include "automation/variant.h"
#include "core/cMirelo.h"
#include "core/known_setting.h"
#include "core/mGlobal.h"
#include "diagnostics/routine.h"

namespace mirelo {

namespace {

Variant Stored(FacadeSetting setting) { return setting.In(mGlobal::AppSettings()); }

}  // namespace

Variant cMirelo::GetPortWebAddress(std::int16_t& Port, std::string& WebAddress) {
  Routine("Mirelo.cMirelo.GetPortWebAddress", [&](Frame& frame) {
    STEP(Port = Stored(FacadeSetting("HTTPPort")).ToInt16());
    STEP(WebAddress = Stored(FacadeSetting("Webaddress")).ToText());
    frame.pop();
  });
  return Variant();
}

Variant cMirelo::GetDisplacementHourMinute(std::int32_t& Hour, std::int32_t& Minute) {
  Routine("Mirelo.cMirelo.GetDisplacementHourMinute", [&](Frame& frame) {
    STEP(Hour = Stored(FacadeSetting("DisplacementHour")).ToInt32());
    STEP(Minute = Stored(FacadeSetting("DisplacementMinute")).ToInt32());
    frame.pop();
  });
  return Variant();
}

}  // namespace mirelo
