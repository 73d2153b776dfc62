#include <cstdint>
#include <string>
#include <string_view>

#include "automation/array.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "core/setting_names.h"
#include "diagnostics/routine.h"
#include "streaming/cQTStreaming.h"
#include "streaming/source_names.h"

namespace mirelo {

std::string cQTStreaming::GiveStreamerFile(std::string_view Site) {
  return Function<std::string>(
      "Mirelo.cQTStreaming.GiveStreamerFile", {}, [&](Frame& frame, std::string& file) {
        const std::string_view wanted = Trim(Site);
        if (wanted.empty()) return frame.pop();

        Array<std::string> names;
        bool listed = false;
        STEP(listed = mGlobal::AppSettings().GetAllKeys(catalogue::kSources, names));
        // A list that broke off has names too, but is no list; an empty section is one without names.
        if (!listed || !names.IsAllocated()) return frame.pop();

        for (const std::int32_t i : frame.loop([&] { return Bounds{names.LBound(), names.UBound()}; })) {
          if (!frame.test([&] { return IsSameSource(names(i), wanted); })) continue;
          // Under the name as it is stored, blanks included.
          STEP(file = mGlobal::AppSettings().GetSetting(catalogue::kSources, names(i), "").ToText());
          break;
        }
        frame.pop();
      });
}

}  // namespace mirelo
