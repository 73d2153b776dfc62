#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/properties.h"
#include "spreadsheet/style.h"

namespace mirelo::calc {

// What a conditional format changes of its cells.
struct CellLook {
  bool bold = false;                                   // false leaves it to the cell
  spreadsheet::Color color = spreadsheet::kAutomatic;  // of the letters; automatic leaves it to the cell
};

// Calc keeps looks as cell styles, which have names that the person sees.

CellLook LookOfStyle(const Document::Uno& document, const std::string& name);
// The style of this look, which is made where there is none yet.
std::string StyleOfLook(const Document::Uno& document, const CellLook& look);

// What a style sets by itself. Nothing for what it leaves to the cell, or when there is no such style.
std::optional<Any> SetByStyle(const Document::Uno& document, const std::string& name,
                              std::string_view property);

}  // namespace mirelo::calc
