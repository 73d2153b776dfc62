#pragma once

#include <array>
#include <string>

#include "automation/regional_format.h"

namespace mirelo::headless {

// What the C library knows of a locale, in UTF-8. Formats are those of strftime. Weeks begin on Sunday.
struct LocaleTexts {
  std::string date_format;
  std::string time_format;
  std::string twelve_hour_format;  // what %r stands for; may be empty
  std::string decimal_separator;
  std::string group_separator;
  std::string am;
  std::string pm;
  std::array<std::string, 12> months;
  std::array<std::string, 12> short_months;
  std::array<std::string, 7> weekdays;
  std::array<std::string, 7> short_weekdays;
};

// The regional format of a locale. The C library knows no long date and no short time: the long date is made
// in the order of the short one, the short time is the long one without its seconds.
RegionalFormat ToRegionalFormat(const LocaleTexts& texts);

}  // namespace mirelo::headless
