#pragma once

#include <string>

namespace mirelo {

// Shows the user a message with an OK button, under the title that all messages of the system bear
// ("Dovanta2"). `style` is one of host::Desktop's icons.
void ShowMessage(const std::string& text, int style);

}  // namespace mirelo
