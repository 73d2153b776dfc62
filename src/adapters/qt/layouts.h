#pragma once

#include <string>

#include "adapters/qt/layout.h"

namespace mirelo::qt {

FormLayout LayoutOfSettingsDialog();
FormLayout LayoutOfColorDialog();
FormLayout LayoutOfErrorDialog();

// The layout of the form of that name; empty for one that has none.
FormLayout LayoutOf(const std::string& form);

}  // namespace mirelo::qt
