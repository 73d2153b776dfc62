#pragma once

namespace mirelo::libreoffice {

// Whether somebody may be there to answer. An office that was started without windows answers boxes by
// itself, and would show a form that nobody sees for ever.
bool OfficeShowsWindows();

}  // namespace mirelo::libreoffice
