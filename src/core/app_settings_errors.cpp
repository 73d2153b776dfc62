#include <cstdint>

#include "automation/runtime_error.h"
#include "core/CAppSettings.h"

namespace mirelo::Errors {

namespace {

constexpr const char* kStore = "Mirelo.CAppSettings";
constexpr const char* kSetting = "Mirelo.CAppSetting";

RuntimeError Make(std::uint32_t bits, const char* description, const char* source) {
  return RuntimeError(ErrorNumber(bits), description, source);
}

}  // namespace

RuntimeError InvalidAppName() { return Make(0x8004427D, "Invalid AppName value", kStore); }
RuntimeError InvalidCompanyName() { return Make(0x8004427E, "Invalid CompanyName value", kStore); }
RuntimeError InvalidMainBranch() { return Make(0x8004427F, "Invalid MainBranch value", kStore); }
RuntimeError InvalidRootKey() { return Make(0x80044280, "Invalid root key value", kStore); }
RuntimeError FailedSavingSetting() {
  return Make(0x80044281, "Failed saving the application setting", kSetting);
}
RuntimeError FailedDeletingSetting() {
  return Make(0x80044282, "Failed deleting the application setting", kSetting);
}
RuntimeError AppSettingsFailure() { return Make(0x80044284, "CAppSettings component failure", kStore); }

}  // namespace mirelo::Errors
