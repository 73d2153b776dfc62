#include "adapters/qt/layouts.h"

namespace mirelo::qt {

FormLayout LayoutOf(const std::string& form) {
  struct Entry {
    const char* form;
    FormLayout (*layout)();
  };
  constexpr Entry kLayouts[] = {
      {"frmMirelo", LayoutOfSettingsDialog},
      {"frmColor", LayoutOfColorDialog},
      {"frmErrorMessage", LayoutOfErrorDialog},
  };
  for (const Entry& entry : kLayouts) {
    if (entry.form == form) return entry.layout();
  }
  return {};
}

}  // namespace mirelo::qt
