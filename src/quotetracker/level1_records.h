#pragma once

#include <string>
#include <string_view>

#include "quotetracker/company.h"
#include "quotetracker/quote.h"
#include "quotetracker/random.h"

namespace mirelo::quotetracker {

// Level I records made of quotes, appended to a string of bytes. `shown` is the ticker as the client named
// it.

// A record of all 31 fields.
void AppendSnapshot(std::string& bytes, std::string_view kind, std::string_view shown, const Quote& quote,
                    const Company& company);

// A record of what a step of the market brings: the symbol, the date, and some of the changed fields. Those
// of a trade come together and only when there was one; bid and ask, their sizes, the day's and the year's
// range come by chance.
void AppendUpdate(std::string& bytes, std::string_view kind, std::string_view shown, const Quote& quote,
                  Random& chance);

}  // namespace mirelo::quotetracker
