#include <cstdint>
#include <string>

#include "automation/variant.h"
#include "core/cMirelo.h"
#include "diagnostics/routine.h"
#include "snapshot/WinInet.h"

namespace mirelo {

Variant cMirelo::DownloadURL(const std::string& URL, const std::string& Host, std::int16_t Port,
                             const std::string& Method, const std::string& strPostQuery) {
  return Function("Mirelo.cMirelo.DownloadURL", Variant(), [&](Frame& frame, Variant& result) {
    WinInet transfer;
    STEP(transfer.HostName(Host));
    STEP(transfer.Resource(URL));
    STEP(transfer.Port(Port));
    if (!strPostQuery.empty()) STEP(transfer.PostQuery(strPostQuery));
    STEP(transfer.Method(Method));
    STEP(transfer.Execute());
    if (frame.test([&] { return transfer.SuccessDone(); })) {
      STEP(result = transfer.TakeResponse());
    } else {
      STEP(result = "");
    }
    frame.pop();
  });
}

}  // namespace mirelo
