#pragma once

#include <string>

namespace mirelo {

// Shows the user a message with an OK button, under the title that all messages of the system bear
// ("Dovanta2"). `style` is one of host::Desktop's icons.
void ShowMessage(const std::string& text, int style);

// Asks the user a question with Yes and No under the same title. True for Yes.
bool Confirm(const std::string& question);

}  // namespace mirelo
