#pragma once

namespace mirelo::forms {
class Form;
}

namespace mirelo::app {

// Stands by when a form is about to be shown to a person: what they would do to the settings dialog in good
// faith and to their harm goes past the program first. Other forms are left alone.
//
// - A list typed into the box for one ticker is added ticker by ticker. What can be no ticker is refused with
//   a message, and stays in the box.
void AttendTo(forms::Form& form);

}  // namespace mirelo::app
