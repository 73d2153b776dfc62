#include "automation_server/rows.h"
#include "automation_server/tables.h"
#include "core/cMirelo.h"
#include "streaming/cQTStreaming.h"

namespace mirelo::automation_server {

Class StreamClass() {
  using Self = cQTStreaming;
  return Creatable<Self>("cQTStreaming",
                         {
                             METHOD(GetQTData),
                             GET_SET(QTConteiner),
                             GET_LET(arrTickers),
                             SET(Owner),
                             GET_LET(st_StreamerFile),
                             GET_LET(Enumerate_Sources_Result_ID),
                             GET_LET(DovantaFormatUserDate),
                             GET_LET(StartStop),
                             GET_SET(copy_cQTDatas),
                             METHOD(connect),
                             METHOD(DisConnect),
                             METHOD(SendWinsock, "as_cmd"),
                             METHOD(RaiseEventTimerProc),
                             METHOD(GiveStreamerFile, Optional("Site", "")),
                             METHOD(stop_sub),
                             METHOD(FreeQTDataBuffer),
                             METHOD(GetCurrentData),
                         },
                         {
                             EVENT(OnStatusText, "sText"),
                             EVENT(PerformanceFollowingProcess, "typeProcess"),
                             EVENT(QTDatas),
                         });
}

}  // namespace mirelo::automation_server
