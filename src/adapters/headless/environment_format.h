#pragma once

#include <optional>
#include <string>

#include "automation/regional_format.h"

namespace mirelo::headless {

// The format of the place that the environment names: LC_ALL or, when that is empty, LC_TIME. The standard
// format when they name none, C, POSIX or en_US, or a locale that this machine does not have.
RegionalFormat EnvironmentFormat();

// The format of a locale by its name ("de_DE", "fr_FR.UTF-8"), its UTF-8 form if it has several. Nothing when
// this machine does not have it in UTF-8.
std::optional<RegionalFormat> FormatOfLocale(const std::string& name);

}  // namespace mirelo::headless
