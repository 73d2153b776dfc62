#pragma once

#include <array>

namespace mirelo::calc {

// The properties that a person or a client formats cells by. A conditional format is none of them.
inline constexpr std::array kCellFormats{
    "NumberFormat",  "CharWeight",    "CharHeight",     "CharColor",    "CharFontName", "CharPosture",
    "CharUnderline", "CharStrikeout", "CellBackColor",  "HoriJustify",  "VertJustify",  "IsTextWrapped",
    "RotateAngle",   "ParaIndent",    "CellProtection", "TableBorder2", "ShadowFormat"};

}  // namespace mirelo::calc
