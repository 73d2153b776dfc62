#pragma once

#include <string>

#include "command_line/option.h"

namespace mirelo::app {

// What command lines are checked for: what is wrong with a value, for people; empty where it is good.

// Tickers, one or several as SplitTickers takes them apart.
std::string WhyNoTickers(const std::string& text);

// The name of a watch list.
std::string WhyNoListName(const std::string& name);

// A time, as ParseDuration reads it.
std::string WhyNoDuration(const std::string& text);

// A format of days, months and years alone. With a time in it each second would be another date, and
// LastVolume begins anew with each date.
std::string WhyNoDateFormat(const std::string& format);

// For options that take the place of a setting: the value is one that the setting allows.
command_line::WhyNot NotAllowedFor(const char* key);

}  // namespace mirelo::app
