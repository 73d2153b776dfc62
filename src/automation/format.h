#pragma once

#include <string>
#include <string_view>

#include "automation/date.h"
#include "automation/regional_format.h"

namespace mirelo {

// A date in a user's format. Letters: d dd ddd dddd ddddd dddddd, m mm mmm mmmm (minutes behind an h or
// before an s), n nn, y yy yyyy, h hh, s ss, w ww q, c, ttttt, AM/PM am/pm A/P a/p AMPM; "/" and ":" stand
// for the regional separators; "quoted" text and the character behind a backslash are literal, and so is
// everything else. Weeks begin on Sunday, week 1 holds 1 January. Hours run to 12 when the format has an
// AM/PM mark. An empty format gives the general form.
std::string Format(Date date, std::string_view format, const RegionalFormat& regional);

// A text in a date format: text that reads as a date is formatted as one, other text comes back as it is. An
// empty format gives the text unchanged.
std::string Format(std::string_view text, std::string_view format, const RegionalFormat& regional);

}  // namespace mirelo
