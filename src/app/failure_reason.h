#pragma once

#include <string>

#include "automation/runtime_error.h"

namespace mirelo::forms {
class Form;
}

namespace mirelo::app {

// When the registry refuses a value, the settings store says that it was refused and not why. These functions
// add the reason, as far as the registry of the installed host knows it: that its file is locked, and by
// which process, or that the disk is full. Other errors and texts stay as they are.

std::string WithReason(const std::string& text);
RuntimeError WithReason(const RuntimeError& error);

// Adds the reason to a form that is about to be shown, if it is a report of a failure.
void AddReason(forms::Form& form);

}  // namespace mirelo::app
