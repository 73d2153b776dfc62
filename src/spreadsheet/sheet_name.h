#pragma once

#include <functional>
#include <string_view>

namespace mirelo::spreadsheet {

// Why a sheet may not bear the name, as a sentence for people; empty when it may. `is_taken` tells whether
// another sheet bears a name already.
std::string_view NameObjection(std::string_view name,
                               const std::function<bool(std::string_view name)>& is_taken);

}  // namespace mirelo::spreadsheet
