#pragma once

#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/package.h"
#include "spreadsheet/style.h"

namespace mirelo::workbook {

// A colour that was read of a drawing.
struct DrawingColor {
  Color color = kAutomatic;
  bool is_exact = true;    // otherwise transparent, or changed in a way that is passed over
  bool is_window = false;  // that of windows, whatever it be
};

// Turns the ways in which a file names colours (a value, a palette's index, a theme's colour with a tint)
// into values.
class ColorReader {
 public:
  // The colours of a theme's part; an empty name stands for a workbook without theme.
  ColorReader(Package& package, const std::string& theme_part);

  // A palette of the file's own instead of the standard one: the element "indexedColors", or null.
  void ReadPalette(pugi::xml_node indexed_colors);

  // The colour of an element such as "fgColor". Automatic for a null element, for system colours and for the
  // theme's plain text colour.
  Color Read(pugi::xml_node element) const;

  // The colour within an element of a drawing, such as "solidFill". Nothing when it tells none.
  std::optional<DrawingColor> ReadDrawn(pugi::xml_node parent) const;

 private:
  Color ThemeColor(std::string_view name) const;

  std::vector<Color> theme_;    // in the order of the indexes that refer to it
  std::vector<Color> indexed_;  // empty: the standard palette
};

}  // namespace mirelo::workbook
