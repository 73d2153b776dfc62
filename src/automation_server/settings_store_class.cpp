#include <string_view>

#include "automation/variant.h"
#include "automation_server/rows.h"
#include "automation_server/tables.h"
#include "core/CAppSettings.h"

namespace mirelo::automation_server {

Class SettingsStoreClass() {
  using Self = CAppSettings;
  // The one whose value goes back to the caller.
  using SaveReference = void (Self::*)(std::string_view, std::string_view, Variant&);
  return Creatable<Self>(
      "CAppSettings",
      {
          METHOD(Init, "CompanyName", "AppName"),
          GET_LET(AppName),
          GET_LET(CompanyName),
          GET_LET(MainBranch),
          GET_LET(RootKey),
          METHOD(DeleteSetting, "section", "key"),
          METHOD(GetAllKeys, "section", "keys"),
          METHOD(GetSetting, "section", "key", "default"),
          MethodRow("SaveSetting", static_cast<SaveReference>(&Self::SaveSetting), "section", "key", "value"),
      });
}

}  // namespace mirelo::automation_server
