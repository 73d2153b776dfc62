#pragma once

#include <functional>
#include <string>
#include <vector>

#include "person/go_costs.h"

namespace mirelo::forms {
class Form;
}

namespace mirelo {

// What the attendant asks before Go.
struct GoGuard {
  LossesOfSheet losses;
  // Tells the person what Go will cost, and answers whether to go on all the same. It is not called where Go
  // costs nothing.
  std::function<bool(const std::vector<std::string>& costs)> accept;
};

// To be called when a form is about to be shown. In the settings dialog it comes between the person and two
// buttons; other forms are left alone.
//
// - The one that adds a ticker, since the dialog by itself would take anything for one: a list in the box is
//   added ticker by ticker, and what can be no ticker is refused with a message and stays in the box.
// - Go, which is not pressed with an address or a port of the stream that nobody could use, nor at costs that
//   the guard does not accept.
void AttendTo(forms::Form& form, const GoGuard& guard = {});

// Asks the person at the desktop, in a box, whether to go on all the same.
bool AskWhetherToGoOn(const std::vector<std::string>& costs);

}  // namespace mirelo
