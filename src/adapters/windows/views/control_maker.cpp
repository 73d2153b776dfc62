#include "adapters/windows/views/control_maker.h"

#include "adapters/windows/views/views.h"

namespace mirelo::windows {

void ControlMaker::OnPanel(const forms::Control* panel) { views_.page = panel; }

void ControlMaker::Called(const std::string& name) { views_.called = name; }

}  // namespace mirelo::windows
