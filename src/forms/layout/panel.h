#pragma once

#include <string>
#include <vector>

#include "forms/layout/layout.h"

namespace mirelo::forms {
class Control;
}

namespace mirelo::forms::layout {

// All of a panel: what the layout says of it ("" is the form itself), and below that those of its controls
// which the layout says nothing of, one below the other. A scroll bar among these stands with the text box in
// front of it.
Part PanelOf(const FormLayout& layout, const std::string& panel,
             const std::vector<forms::Control*>& controls);

}  // namespace mirelo::forms::layout
