#include "automation_server/rows.h"
#include "automation_server/tables.h"
#include "snapshot/WinInet.h"

namespace mirelo::automation_server {

Class TransferClass() {
  using Self = WinInet;
  return Creatable<Self>("WinInet",
                         {
                             GET_LET(TimeoutSec),
                             METHOD(Cancel),
                             METHOD(Execute),
                             GET_LET(SuccessDone),
                             GET_LET(Response),
                             GET_LET(ContentType),
                             GET_LET(PostQuery),
                             GET_LET(AcceptTypes),
                             GET_LET(Referer),
                             GET_LET(Resource),
                             GET_LET(Method),
                             GET_LET(Password),
                             GET_LET(UserName),
                             GET_LET(Port),
                             GET_LET(HostName),
                             GET_LET(AgentName),
                         },
                         {
                             EVENT(OnProgress, "Elapsed", "ContentLength", "BytesRead"),
                             EVENT(OnStateChanged, "State"),
                         });
}

}  // namespace mirelo::automation_server
