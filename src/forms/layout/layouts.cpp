#include "forms/layout/layouts.h"

namespace mirelo::forms::layout {

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

}  // namespace mirelo::forms::layout
