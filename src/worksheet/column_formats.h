#pragma once

#include <string>
#include <string_view>

namespace mirelo {

namespace host::excel {
class Range;
}
class Frame;

// Gives the data cells of a column the number format and alignment of its name, told apart by its letters'
// case; a name without any leaves them as they are. Changes are coloured by their sign as well.
// `decimal_format` is that of prices. `cells` may be null (error 91). The statements are the calling
// routine's.
void FormatColumn(Frame& frame, host::excel::Range* cells, std::string_view name,
                  const std::string& decimal_format);

}  // namespace mirelo
