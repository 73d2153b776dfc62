#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/properties.h"
#include "spreadsheet/style.h"

namespace mirelo::calc {

// What a conditional format changes of its cells, which .xlsx files call a "dxf".
struct DifferentialFormat {
  bool bold = false;                                   // false leaves it to the cell
  spreadsheet::Color color = spreadsheet::kAutomatic;  // of the font; automatic leaves it to the cell
};

// Calc keeps differential formats as cell styles, which have names that the person sees.

DifferentialFormat FormatOfStyle(const Document::Uno& document, const std::string& name);
// The style of this format, which is made where there is none yet.
std::string StyleOfFormat(const Document::Uno& document, const DifferentialFormat& format);

// What a style sets by itself. Nothing for what it leaves to the cell, or when there is no such style.
std::optional<Any> SetByStyle(const Document::Uno& document, const std::string& name,
                              std::string_view property);

}  // namespace mirelo::calc
