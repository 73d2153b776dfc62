#pragma once

#include <string>

#include "forms/layout/layout.h"

namespace mirelo::forms::layout {

FormLayout LayoutOfSettingsDialog();
FormLayout LayoutOfColorDialog();
FormLayout LayoutOfErrorDialog();

// The layout of the form of that name; empty for one that has none.
FormLayout LayoutOf(const std::string& form);

}  // namespace mirelo::forms::layout
