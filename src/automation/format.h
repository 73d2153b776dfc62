#pragma once

#include <string>
#include <string_view>

#include "automation/date.h"
#include "automation/regional_format.h"

namespace mirelo {

// A date in a user's format. Letters, in either case: d dd ddd dddd ddddd dddddd, m mm mmm mmmm (m and mm are
// minutes behind an h or before an s), n nn, y yy yyyy, h hh, s ss, w ww q, c, ttttt; and the marks AM/PM
// am/pm A/P a/p AMPM, with which hours run to 12. "/" and ":" stand for the regional separators; "quoted"
// text and the character behind a backslash are literal, and so is everything else. Weeks begin on Sunday,
// week 1 holds 1 January. The named formats are General Date, Long, Medium and Short Date, Long, Medium and
// Short Time. An empty format gives the general form. Error 5 for a date outside the years 100 to 9999.
std::string Format(Date date, std::string_view format, const RegionalFormat& regional);

// A text in a date format: text that reads as a date is formatted as one, other text comes back as it is. An
// empty format gives the text unchanged.
std::string Format(std::string_view text, std::string_view format, const RegionalFormat& regional);

}  // namespace mirelo
