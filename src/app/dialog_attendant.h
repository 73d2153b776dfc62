#pragma once

namespace mirelo::forms {
class Form;
}

namespace mirelo::app {

// To be called when a form is about to be shown. In the settings dialog it comes between the person and the
// button that adds a ticker, since the dialog by itself would take anything for one: a list in the box is
// added ticker by ticker, and what can be no ticker is refused with a message and stays in the box. Other
// forms are left alone.
void AttendTo(forms::Form& form);

}  // namespace mirelo::app
