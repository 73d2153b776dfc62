#pragma once

#include <filesystem>

namespace mirelo::app {

// Where LibreOffice is on this machine.
struct OfficePlace {
  std::filesystem::path programs;    // the folder of soffice
  std::filesystem::path extensions;  // the folder of those that all users have

  std::filesystem::path Soffice() const { return programs / "soffice"; }
};

// The one of soffice in PATH, else Debian's own. Error 53 where there is none, or none with Calc, with a text
// that says what to install.
OfficePlace FindOffice();

}  // namespace mirelo::app
