#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mirelo {

class Frame;
class frmMirelo;

// The widths of the grid's columns, kept by the columns' headers.

// Stores the width of each column that has a header. Its statements are the calling routine's; error 91
// without a store.
void StoreColumnWidths(Frame& frame, const frmMirelo& form);
// The width that was stored for the column with this header. Error 91 without a store, 13 for what is no
// number.
std::int32_t StoredColumnWidth(const frmMirelo& form, const std::string& header,
                               std::string_view default_width);

}  // namespace mirelo
