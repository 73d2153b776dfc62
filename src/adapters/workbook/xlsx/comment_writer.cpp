#include "adapters/workbook/xlsx/comment_writer.h"

#include <string>

#include "adapters/workbook/xlsx/format_writer.h"
#include "adapters/workbook/xlsx/text_escapes.h"
#include "adapters/workbook/xlsx/writer_error.h"

namespace mirelo::workbook {

void WriteComment(std::int32_t row, std::int32_t column, Comment comment, lxw_worksheet* worksheet) {
  lxw_comment_options options{};
  options.visible = comment.visible ? LXW_COMMENT_DISPLAY_VISIBLE : LXW_COMMENT_DISPLAY_HIDDEN;
  // The writer escapes control characters in cells, but not here.
  std::string author = EscapeControls(comment.author);
  options.author = author.data();
  options.width = static_cast<std::uint16_t>(comment.width);
  options.height = static_cast<std::uint16_t>(comment.height);
  options.color = WriterColor(comment.color);
  options.font_name = comment.font_name.data();
  options.font_size = comment.font_size;
  CheckWriter(worksheet_write_comment_opt(worksheet, static_cast<lxw_row_t>(row - 1),
                                          static_cast<lxw_col_t>(column - 1),
                                          EscapeControls(comment.text).c_str(), &options));
}

}  // namespace mirelo::workbook
