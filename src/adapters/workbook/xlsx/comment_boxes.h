#pragma once

#include <cstdint>
#include <map>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/workbook/model/comment.h"
#include "adapters/workbook/xlsx/relationships.h"
#include "adapters/workbook/xlsx/sheet_reader.h"

namespace mirelo::workbook {

// The boxes of a sheet's comments, which a file keeps apart from their texts, in a drawing of an older
// format.
class CommentBoxes {
 public:
  // Reads the drawing that a sheet refers to, if it does. A drawing that cannot be read is a loss, not
  // damage: programs have written some that are no well-formed XML.
  CommentBoxes(SheetContext& context, const Relationships& relationships, const std::string& sheet);

  // Sets the comment's size, colour and visibility to those of its box, as far as the file tells them.
  void Fit(const CellPlace& cell, Comment& comment) const;

 private:
  struct Box {
    std::int32_t width = 0;  // pixels; 0 when not told
    std::int32_t height = 0;
    bool visible = false;
    Color color = kAutomatic;
  };

  void ReadShape(pugi::xml_node shape);

  std::map<std::pair<std::int32_t, std::int32_t>, Box> boxes_;
  bool has_others_ = false;
};

}  // namespace mirelo::workbook
