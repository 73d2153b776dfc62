#pragma once

#include <string>

namespace mirelo::calc {

// The picture of that name as a text of SVG, on a field of 16 by 16: "left", "all-left", "right",
// "all-right", "up", "down", "delete", "chart", "error", "send", "ignore", "retry" and "abort". Empty for
// another name.
std::string PictureText(const std::string& name, int pixels);

// A check cell of a grid: a box that is ticked or not, with that picture beside it; empty for none.
std::string CheckCellText(bool ticked, const std::string& picture, int pixels);

}  // namespace mirelo::calc
