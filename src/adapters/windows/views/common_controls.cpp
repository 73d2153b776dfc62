#include "adapters/windows/views/common_controls.h"

#include "adapters/windows/views/painted_window.h"

namespace mirelo::windows {

namespace {

// What a library says of the libraries that it needs has this number.
constexpr WORD kNeeds = 2;

// Of this module, for as long as it is there.
HANDLE OwnNeeds() {
  ACTCTXW needs{};
  needs.cbSize = sizeof needs;
  needs.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
  needs.hModule = OwnModule();
  needs.lpResourceName = MAKEINTRESOURCEW(kNeeds);
  return ::CreateActCtxW(&needs);
}

}  // namespace

CommonControls::CommonControls() {
  static const HANDLE needs = OwnNeeds();
  if (needs == INVALID_HANDLE_VALUE || ::ActivateActCtx(needs, &active_) == 0) active_ = 0;
  INITCOMMONCONTROLSEX classes{};
  classes.dwSize = sizeof classes;
  classes.dwICC = ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES;
  ::InitCommonControlsEx(&classes);
}

CommonControls::~CommonControls() {
  if (active_ != 0) ::DeactivateActCtx(0, active_);
}

}  // namespace mirelo::windows
