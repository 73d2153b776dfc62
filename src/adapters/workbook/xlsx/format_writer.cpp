#include "adapters/workbook/xlsx/format_writer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "adapters/workbook/rules.h"
#include "host/excel/constants.h"
#include "spreadsheet/errors.h"
#include "spreadsheet/format_code.h"

namespace mirelo::workbook {

namespace {

using namespace host::excel;

constexpr std::array<std::pair<std::int32_t, std::uint8_t>, 8> kHorizontal{{
    {xlHAlignGeneral, LXW_ALIGN_NONE},
    {xlHAlignLeft, LXW_ALIGN_LEFT},
    {xlHAlignCenter, LXW_ALIGN_CENTER},
    {xlHAlignRight, LXW_ALIGN_RIGHT},
    {xlHAlignFill, LXW_ALIGN_FILL},
    {xlHAlignJustify, LXW_ALIGN_JUSTIFY},
    {xlHAlignCenterAcrossSelection, LXW_ALIGN_CENTER_ACROSS},
    {xlHAlignDistributed, LXW_ALIGN_DISTRIBUTED},
}};

constexpr std::uint8_t kSolid = 1;  // of FillStyle's patterns

// In the order of the numbers in Alignment::vertical.
constexpr std::array<std::uint8_t, 5> kVertical{LXW_ALIGN_NONE, LXW_ALIGN_VERTICAL_TOP,
                                                LXW_ALIGN_VERTICAL_CENTER, LXW_ALIGN_VERTICAL_JUSTIFY,
                                                LXW_ALIGN_VERTICAL_DISTRIBUTED};

// In the order of Edge, but for the diagonal.
constexpr std::array<void (*)(lxw_format*, std::uint8_t), 4> kSetLine{format_set_left, format_set_right,
                                                                      format_set_top, format_set_bottom};
constexpr std::array<void (*)(lxw_format*, lxw_color_t), 4> kSetLineColor{
    format_set_left_color, format_set_right_color, format_set_top_color, format_set_bottom_color};

// What both a font and a condition's format say of the font.
template <class Font>
void SetFont(lxw_format* format, const Font& font) {
  if (font.bold) format_set_bold(format);
  if (font.italic) format_set_italic(format);
  if (font.strikeout) format_set_font_strikeout(format);
  if (font.underline != 0) format_set_underline(format, font.underline);
  if (font.color != kAutomatic) format_set_font_color(format, WriterColor(font.color));
}

void SetNumberFormat(lxw_format* format, const std::string& code) {
  if (const auto number = BuiltInFormatNumber(code)) {
    format_set_num_format_index(format, *number);
  } else {
    format_set_num_format(format, code.c_str());
  }
}

void SetFill(lxw_format* format, const FillStyle& fill) {
  if (fill.pattern == 0) return;
  format_set_pattern(format, fill.pattern);
  Color foreground = fill.foreground;
  Color background = fill.background;
  if (fill.pattern == kSolid) {
    // The writer takes the two colours of a solid fill the other way round, and a single one for what is
    // seen.
    if (foreground == kAutomatic) background = kAutomatic;
    if (background != kAutomatic) std::swap(foreground, background);
  }
  if (foreground != kAutomatic) format_set_fg_color(format, WriterColor(foreground));
  if (background != kAutomatic) format_set_bg_color(format, WriterColor(background));
}

void SetBorder(lxw_format* format, const BorderStyle& border) {
  for (std::size_t edge = 0; edge < kSetLine.size(); ++edge) {
    const auto& [line, color] = border.edges[edge];
    if (line == 0) continue;
    kSetLine[edge](format, line);
    if (color != kAutomatic) kSetLineColor[edge](format, WriterColor(color));
  }
  const auto& [line, color] = border.edges[static_cast<std::size_t>(Edge::Diagonal)];
  if (line == 0 || border.diagonals == 0) return;
  format_set_diag_type(format, border.diagonals);
  format_set_diag_border(format, line);
  if (color != kAutomatic) format_set_diag_color(format, WriterColor(color));
}

void SetAlignment(lxw_format* format, const Alignment& alignment) {
  for (const auto& [horizontal, align] : kHorizontal) {
    if (horizontal == alignment.horizontal && align != LXW_ALIGN_NONE) format_set_align(format, align);
  }
  if (alignment.vertical != 0) format_set_align(format, kVertical[alignment.vertical]);
  if (alignment.indent != 0) format_set_indent(format, alignment.indent);
  if (alignment.rotation != 0) format_set_rotation(format, alignment.rotation);
  if (alignment.wrap) format_set_text_wrap(format);
  if (alignment.shrink) format_set_shrink(format);
}

}  // namespace

// The writer takes 0 for no colour and has a number of its own for black.
lxw_color_t WriterColor(Color color) {
  if (color == kAutomatic) return LXW_COLOR_UNSET;
  return color == 0 ? static_cast<lxw_color_t>(LXW_COLOR_BLACK) : static_cast<lxw_color_t>(color);
}

lxw_format* FormatWriter::For(StyleId id) {
  lxw_format*& format = formats_[id];
  if (format != nullptr) return format;
  format = Add();
  const Style& style = styles_.Get(id);
  format_set_font_name(format, style.font.name.c_str());
  format_set_font_size(format, style.font.size);
  SetFont(format, style.font);
  SetNumberFormat(format, style.number_format);
  SetFill(format, style.fill);
  SetBorder(format, style.border);
  SetAlignment(format, style.alignment);
  return format;
}

lxw_format* FormatWriter::For(const DifferentialFormat& differential) {
  if (differential == DifferentialFormat()) return nullptr;
  lxw_format* format = Add();
  SetFont(format, differential);
  if (!differential.number_format.empty()) format_set_num_format(format, differential.number_format.c_str());
  if (differential.fill.pattern == kSolid) {
    // conditions have it the other way round
    format_set_bg_color(format, WriterColor(differential.fill.foreground));
  } else {
    SetFill(format, differential.fill);
  }
  SetBorder(format, differential.border);
  return format;
}

lxw_format* FormatWriter::Add() {
  lxw_format* format = workbook_add_format(workbook_);
  if (format == nullptr) throw Errors::OutOfMemory();
  return format;
}

}  // namespace mirelo::workbook
