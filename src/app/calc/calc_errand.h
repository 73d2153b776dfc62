#pragma once

#include <filesystem>

#include "libreoffice/errand/errand.h"

namespace mirelo::app {

struct OfficePlace;

// Has an office of its own, with a profile of its own, run a day, and prints what it tells. Ctrl-C ends the
// day in order, a second one kills the office. No office is left behind.
//
// `file` takes what the office stores; empty where the person in front of the office stores. The result is
// the exit code.
int RunErrand(const OfficePlace& office, libreoffice::Errand errand, const std::filesystem::path& file,
              bool headless);

}  // namespace mirelo::app
