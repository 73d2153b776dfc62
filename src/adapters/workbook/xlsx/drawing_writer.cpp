#include "adapters/workbook/xlsx/drawing_writer.h"

#include <cstddef>
#include <cstdint>

#include "adapters/workbook/model/sheet_places.h"
#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/chart_names.h"
#include "adapters/workbook/xlsx/text_escapes.h"
#include "adapters/workbook/xlsx/xml_text.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {

namespace {

constexpr std::size_t kFirstShape = 2;  // the number 1 is the drawing's own

void AppendCorner(pugi::xml_node anchor, const char* name, const SheetMeasure& measure, double left,
                  double top) {
  const Ruler::Mark column = measure.columns.MarkAt(Emu(left));
  const Ruler::Mark row = measure.rows.MarkAt(Emu(top));
  pugi::xml_node corner = anchor.append_child(name);
  AppendText(corner, "xdr:col", std::to_string(column.number - 1));
  AppendText(corner, "xdr:colOff", std::to_string(column.offset));
  AppendText(corner, "xdr:row", std::to_string(row.number - 1));
  AppendText(corner, "xdr:rowOff", std::to_string(row.offset));
}

void AppendPair(pugi::xml_node parent, const char* name, const char* first, std::int64_t one,
                const char* second, std::int64_t other) {
  pugi::xml_node pair = parent.append_child(name);
  pair.append_attribute(first) = one;
  pair.append_attribute(second) = other;
}

void AppendFrame(pugi::xml_node anchor, const Chart& chart, std::size_t index) {
  pugi::xml_node frame = anchor.append_child("xdr:graphicFrame");
  frame.append_attribute("macro") = "";
  pugi::xml_node about = frame.append_child("xdr:nvGraphicFramePr");
  pugi::xml_node shape = about.append_child("xdr:cNvPr");
  shape.append_attribute("id") = std::to_string(kFirstShape + index).c_str();
  shape.append_attribute("name") = EscapeControls(CleanText(chart.name)).c_str();
  about.append_child("xdr:cNvGraphicFramePr");
  pugi::xml_node transform = frame.append_child("xdr:xfrm");  // the anchor's say, though the format wants one
  AppendPair(transform, "a:off", "x", 0, "y", 0);
  AppendPair(transform, "a:ext", "cx", 0, "cy", 0);
  pugi::xml_node data = frame.append_child("a:graphic").append_child("a:graphicData");
  data.append_attribute("uri") = "http://schemas.openxmlformats.org/drawingml/2006/chart";
  data.append_child("c:chart").append_attribute("r:id") = ("rId" + std::to_string(index + 1)).c_str();
}

void AppendAnchor(pugi::xml_node root, const SheetMeasure& measure, const Chart& chart, std::size_t index) {
  pugi::xml_node anchor = root.append_child("xdr:twoCellAnchor");
  const std::string placement(WordOf(kPlacementNames, chart.placement));
  if (!placement.empty()) anchor.append_attribute("editAs") = placement.c_str();
  const ChartBox& place = chart.place;
  AppendCorner(anchor, "xdr:from", measure, place.left, place.top);
  AppendCorner(anchor, "xdr:to", measure, place.left + place.width, place.top + place.height);
  AppendFrame(anchor, chart, index);
  anchor.append_child("xdr:clientData");
}

pugi::xml_node AppendRoot(pugi::xml_document& document) {
  pugi::xml_node root = document.append_child("xdr:wsDr");
  root.append_attribute("xmlns:xdr") = "http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing";
  root.append_attribute("xmlns:a") = "http://schemas.openxmlformats.org/drawingml/2006/main";
  root.append_attribute("xmlns:c") = "http://schemas.openxmlformats.org/drawingml/2006/chart";
  root.append_attribute("xmlns:r") = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
  return root;
}

}  // namespace

std::string DrawingXml(const Sheet& sheet) {
  const SheetMeasure measure(sheet);
  pugi::xml_document document;
  const pugi::xml_node root = AppendRoot(document);
  for (std::size_t i = 0; i < sheet.charts.all.size(); ++i)
    AppendAnchor(root, measure, *sheet.charts.all[i], i);
  return XmlText(document);
}

std::string DrawingXml(const Chart& chart_sheet) {
  pugi::xml_document document;
  pugi::xml_node anchor = AppendRoot(document).append_child("xdr:absoluteAnchor");
  AppendPair(anchor, "xdr:pos", "x", 0, "y", 0);
  AppendPair(anchor, "xdr:ext", "cx", Emu(chart_sheet.place.width), "cy", Emu(chart_sheet.place.height));
  AppendFrame(anchor, chart_sheet, 0);
  anchor.append_child("xdr:clientData");
  return XmlText(document);
}

}  // namespace mirelo::workbook
