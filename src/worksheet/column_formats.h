#pragma once

#include <string>
#include <string_view>

namespace mirelo {

namespace host::excel {
class Range;
}
class Frame;

// Sets number format and alignment of a column's data cells by the column's name, whose case counts; a
// name without a format leaves the cells as they are. Cells of "Change" are coloured by their sign as well.
// `decimal_format` is the format of prices. `cells` may be null (error 91). Each act is a statement of the
// calling routine, whose frame is `frame`.
void FormatColumn(Frame& frame, host::excel::Range* cells, std::string_view name,
                  const std::string& decimal_format);

}  // namespace mirelo
