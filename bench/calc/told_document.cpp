#include "calc/told_document.h"

#include <algorithm>
#include <array>
#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/drawing/XDrawPageSupplier.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XConditionalFormat.hpp>
#include <com/sun/star/sheet/XConditionalFormats.hpp>
#include <com/sun/star/sheet/XSheetAnnotation.hpp>
#include <com/sun/star/sheet/XSheetAnnotationShapeSupplier.hpp>
#include <com/sun/star/sheet/XSheetAnnotationsSupplier.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XUniqueCellFormatRangesSupplier.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/table/BorderLine2.hpp>
#include <com/sun/star/table/CellHoriJustify.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/text/XSimpleText.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>
#include <sstream>

#include "uno/text.h"

namespace mirelo {

namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;
using uno::TextOf;
using Sheet = Reference<css::sheet::XSpreadsheet>;

template <class Interface, class Held>
Reference<Interface> As(const Held& held) {
  return Reference<Interface>(held, UNO_QUERY_THROW);
}

template <class Value>
Value Get(const Reference<css::beans::XPropertySet>& properties, const char* name) {
  Value value{};
  properties->getPropertyValue(uno::OfficeText(name)) >>= value;
  return value;
}

std::string Told(const Any& value) {
  if (rtl::OUString text; value >>= text) return TextOf(text);
  double number = 0;
  value >>= number;
  return std::to_string(number);
}

std::string Told(const css::table::BorderLine2& line) {
  return std::to_string(line.OuterLineWidth) + "/" + std::to_string(line.LineStyle) + "/" +
         std::to_string(line.Color);
}

// The look of cells that all have the same.
std::string ToldLook(const Reference<css::sheet::XSpreadsheetDocument>& document,
                     const Reference<css::beans::XPropertySet>& cell) {
  const auto formats = As<css::util::XNumberFormatsSupplier>(document)->getNumberFormats();
  std::ostringstream told;
  told << TextOf(Get<rtl::OUString>(formats->getByKey(Get<sal_Int32>(cell, "NumberFormat")), "FormatString"))
       << " align " << static_cast<int>(Get<css::table::CellHoriJustify>(cell, "HoriJustify")) << " weight "
       << Get<float>(cell, "CharWeight") << " letters " << Get<sal_Int32>(cell, "CharColor") << " ground "
       << Get<sal_Int32>(cell, "CellBackColor") << " style " << TextOf(Get<rtl::OUString>(cell, "CellStyle"))
       << " lines";
  for (const char* edge : {"LeftBorder2", "RightBorder2", "TopBorder2", "BottomBorder2"})
    told << " " << Told(Get<css::table::BorderLine2>(cell, edge));
  return told.str();
}

void TellLooks(const Reference<css::sheet::XSpreadsheetDocument>& document, const Sheet& sheet,
               std::vector<std::string>& lines) {
  const auto looks = As<css::container::XIndexAccess>(
      As<css::sheet::XUniqueCellFormatRangesSupplier>(sheet)->getUniqueCellFormatRanges());
  std::vector<std::string> told;
  for (sal_Int32 i = 0; i < looks->getCount(); ++i) {
    for (const auto& area : As<css::sheet::XSheetCellRanges>(looks->getByIndex(i))->getRangeAddresses()) {
      const auto cell =
          As<css::beans::XPropertySet>(sheet->getCellByPosition(area.StartColumn, area.StartRow));
      std::ostringstream line;
      line << "look " << area.StartColumn << ":" << area.StartRow << "-" << area.EndColumn << ":"
           << area.EndRow << " " << ToldLook(document, cell);
      told.push_back(line.str());
    }
  }
  std::ranges::sort(told);
  lines.insert(lines.end(), told.begin(), told.end());
}

std::string ToldSizes(const Reference<css::container::XIndexAccess>& lines, const char* property) {
  std::ostringstream told;
  for (sal_Int32 i = 0; i < lines->getCount(); ++i)
    told << " " << Get<sal_Int32>(As<css::beans::XPropertySet>(lines->getByIndex(i)), property);
  return told.str();
}

void TellCells(const Sheet& sheet, std::vector<std::string>& lines) {
  const auto cursor = sheet->createCursor();
  As<css::sheet::XUsedAreaCursor>(cursor)->gotoEndOfUsedArea(true);
  const auto rows = As<css::sheet::XCellRangeData>(cursor)->getDataArray();
  for (const auto& row : rows) {
    std::string line = "cells";
    for (const Any& cell : row) line.append("|").append(Told(cell));
    lines.push_back(line);
  }
  const auto used = As<css::table::XColumnRowRange>(cursor);
  lines.push_back(
      std::string("widths").append(ToldSizes(As<css::container::XIndexAccess>(used->getColumns()), "Width")));
  lines.push_back(
      std::string("heights").append(ToldSizes(As<css::container::XIndexAccess>(used->getRows()), "Height")));
}

void TellComments(const Sheet& sheet, std::vector<std::string>& lines) {
  const auto comments =
      As<css::container::XIndexAccess>(As<css::sheet::XSheetAnnotationsSupplier>(sheet)->getAnnotations());
  for (sal_Int32 i = 0; i < comments->getCount(); ++i) {
    const auto comment = As<css::sheet::XSheetAnnotation>(comments->getByIndex(i));
    const auto size = As<css::sheet::XSheetAnnotationShapeSupplier>(comment)->getAnnotationShape()->getSize();
    std::ostringstream line;
    line << "comment " << comment->getPosition().Column << ":" << comment->getPosition().Row << " "
         << TextOf(As<css::text::XSimpleText>(comment)->getString()) << " " << size.Width << "x"
         << size.Height << (comment->getIsVisible() ? " shown" : "");
    lines.push_back(line.str());
  }
}

void TellConditions(const Sheet& sheet, std::vector<std::string>& lines) {
  const auto all = Get<Reference<css::sheet::XConditionalFormats>>(As<css::beans::XPropertySet>(sheet),
                                                                   "ConditionalFormats");
  for (const auto& format : all->getConditionalFormats()) {
    std::ostringstream line;
    line << "conditions";
    const auto cells =
        Get<Reference<css::sheet::XSheetCellRanges>>(As<css::beans::XPropertySet>(format), "Range");
    for (const auto& area : cells->getRangeAddresses())
      line << " " << area.StartColumn << ":" << area.StartRow << "-" << area.EndColumn << ":" << area.EndRow;
    for (sal_Int32 i = 0; i < As<css::container::XIndexAccess>(format)->getCount(); ++i) {
      const auto entry =
          As<css::beans::XPropertySet>(As<css::container::XIndexAccess>(format)->getByIndex(i));
      line << " if " << Get<sal_Int32>(entry, "Operator") << " "
           << TextOf(Get<rtl::OUString>(entry, "Formula1")) << " "
           << TextOf(Get<rtl::OUString>(entry, "StyleName"));
    }
    lines.push_back(line.str());
  }
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
sal_Int32 DrawingsOn(const Sheet& sheet) {
  return As<css::drawing::XDrawPageSupplier>(sheet)->getDrawPage()->getCount();
}
#pragma GCC diagnostic pop

}  // namespace

std::vector<std::string> Told(const Reference<css::sheet::XSpreadsheetDocument>& document) {
  const auto sheets = As<css::container::XIndexAccess>(document->getSheets());
  std::vector<std::string> lines;
  for (sal_Int32 i = 0; i < sheets->getCount(); ++i) {
    const auto sheet = As<css::sheet::XSpreadsheet>(sheets->getByIndex(i));
    lines.push_back("sheet " + TextOf(As<css::container::XNamed>(sheet)->getName()) + " with " +
                    std::to_string(DrawingsOn(sheet)) + " drawings");
    TellCells(sheet, lines);
    TellLooks(document, sheet, lines);
    TellComments(sheet, lines);
    TellConditions(sheet, lines);
  }
  return lines;
}

}  // namespace mirelo
