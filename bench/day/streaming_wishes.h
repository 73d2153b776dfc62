#pragma once

#include <string>
#include <vector>

#include "person/dialog_wishes.h"

namespace mirelo {

// A streaming day of these tickers, of which each has a history of these fields.
DialogWishes StreamingWishes(std::vector<std::string> tickers, const std::vector<std::string>& fields);

}  // namespace mirelo
