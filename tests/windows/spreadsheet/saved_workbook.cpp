#include "windows/spreadsheet/saved_workbook.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "automation/wide_text.h"
#include "automation_server/classes.h"
#include "host/excel/chart.h"
#include "host/excel/chart_parts.h"
#include "host/excel/constants.h"
#include "host/excel/range.h"
#include "host/excel/series.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "windows/spreadsheet/stored_archive.h"

namespace mirelo::testing {

namespace {

namespace excel = host::excel;

constexpr std::int32_t kXlsx = 51;  // xlOpenXMLWorkbook
constexpr std::int32_t kCannotSave = 1004;
constexpr double kUnitsOfAPoint = 12700;

const std::string kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
const std::string kFormats = "http://schemas.openxmlformats.org/";
const std::string kMain = " xmlns=\"" + kFormats + "spreadsheetml/2006/main\"";
const std::string kLinks = " xmlns:r=\"" + kFormats + "officeDocument/2006/relationships\"";
const std::string kMedia = "application/vnd.openxmlformats-officedocument.";

std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char letter : text) {
    switch (letter) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += letter;
    }
  }
  return escaped;
}

std::string Written(double number) {
  std::array<char, 32> text{};
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

std::string Units(double points) {
  return std::to_string(static_cast<std::int64_t>(points * kUnitsOfAPoint));
}

// --- Parts -----------------------------------------------------------------------------------------------

// What a part refers to, which others know by its number.
class References {
 public:
  std::string Add(const std::string& kind, const std::string& target) {
    const std::string id = "rId" + std::to_string(++count_);
    list_ += "<Relationship Id=\"" + id + "\" Type=\"" + kFormats + "officeDocument/2006/relationships/" +
             kind + "\" Target=\"" + target + "\"/>";
    return id;
  }
  std::string Part() const {
    return kHead + "<Relationships xmlns=\"" + kFormats + "package/2006/relationships\">" + list_ +
           "</Relationships>";
  }

 private:
  std::string list_;
  int count_ = 0;
};

std::string CellPart(excel::Range& cell) {
  const Variant value = cell.Value();
  const std::string place = "<c r=\"" + cell.Address(false, false) + "\"";
  switch (value.type()) {
    case Variant::Type::Empty:
      return "";
    case Variant::Type::String:
      return place + " t=\"inlineStr\"><is><t xml:space=\"preserve\">" + Escaped(value.ToText()) +
             "</t></is></c>";
    case Variant::Type::Boolean:
      return place + " t=\"b\"><v>" + (value.ToBoolean() ? "1" : "0") + "</v></c>";
    case Variant::Type::Date:
      return place + " s=\"1\"><v>" + Written(value.ToDouble()) + "</v></c>";
    default:
      return place + "><v>" + Written(value.ToDouble()) + "</v></c>";
  }
}

std::string RowsPart(excel::Worksheet& sheet) {
  const auto last = sheet.Cells()->SpecialCells(excel::xlCellTypeLastCell);
  std::string rows;
  for (std::int32_t row = 1; row <= last->Row(); ++row) {
    std::string cells;
    for (std::int32_t column = 1; column <= last->Column(); ++column)
      cells += CellPart(*sheet.Cells(row, column));
    if (!cells.empty()) rows += "<row r=\"" + std::to_string(row) + "\">" + cells + "</row>";
  }
  return rows;
}

std::string SeriesPart(std::int32_t number, excel::Series& series) {
  const Variant values = series.Values();
  const VariantArray& numbers = values.AsArray();
  std::string points;
  for (std::int32_t i = numbers.LBound(); i <= numbers.UBound(); ++i) {
    if (numbers(i).IsEmpty()) continue;
    points += "<c:pt idx=\"" + std::to_string(i - numbers.LBound()) + "\"><c:v>" +
              Written(numbers(i).ToDouble()) + "</c:v></c:pt>";
  }
  const std::string place = std::to_string(number - 1);
  return "<c:ser><c:idx val=\"" + place + "\"/><c:order val=\"" + place +
         "\"/><c:val><c:numLit><c:ptCount val=\"" + std::to_string(numbers.UBound() - numbers.LBound() + 1) +
         "\"/>" + points + "</c:numLit></c:val></c:ser>";
}

// All that there are: nobody counts them.
std::string AllSeries(excel::Chart& chart) {
  std::string all;
  try {
    for (std::int32_t number = 1;; ++number) all += SeriesPart(number, *chart.SeriesCollection(number));
  } catch (const RuntimeError& error) {
    if (error.Number() != kCannotSave) throw;
  }
  return all;
}

std::string ChartPart(excel::Chart& chart) {
  const std::string title = !chart.HasTitle() ? ""
                                              : "<c:title><c:tx><c:rich><a:bodyPr/><a:p><a:r><a:t>" +
                                                    Escaped(chart.ChartTitle()->Text()) +
                                                    "</a:t></a:r></a:p></c:rich></c:tx></c:title>";
  const auto axis = [](const char* kind, int id, int other, const char* side) {
    const std::string number = std::to_string(id);
    return std::string("<c:") + kind + "><c:axId val=\"" + number +
           "\"/><c:scaling/><c:delete val=\"0\"/><c:axPos val=\"" + side + "\"/><c:crossAx val=\"" +
           std::to_string(other) + "\"/></c:" + kind + ">";
  };
  return kHead + "<c:chartSpace xmlns:c=\"" + kFormats + "drawingml/2006/chart\" xmlns:a=\"" + kFormats +
         "drawingml/2006/main\"><c:chart>" + title +
         "<c:plotArea><c:lineChart><c:grouping val=\"standard\"/>" + AllSeries(chart) +
         "<c:axId val=\"1\"/><c:axId val=\"2\"/></c:lineChart>" + axis("catAx", 1, 2, "b") +
         axis("valAx", 2, 1, "l") + "</c:plotArea></c:chart></c:chartSpace>";
}

std::string AnchorPart(excel::Shape& shape, int number, const std::string& reference) {
  return "<xdr:absoluteAnchor><xdr:pos x=\"" + Units(shape.Left()) + "\" y=\"" + Units(shape.Top()) +
         "\"/><xdr:ext cx=\"" + Units(shape.Width()) + "\" cy=\"" + Units(shape.Height()) +
         "\"/><xdr:graphicFrame><xdr:nvGraphicFramePr><xdr:cNvPr id=\"" + std::to_string(number) +
         "\" name=\"" + Escaped(shape.Name()) +
         "\"/><xdr:cNvGraphicFramePr/></xdr:nvGraphicFramePr><xdr:xfrm><a:off x=\"0\" y=\"0\"/><a:ext "
         "cx=\"0\" "
         "cy=\"0\"/></xdr:xfrm><a:graphic><a:graphicData uri=\"" +
         kFormats + "drawingml/2006/chart\"><c:chart r:id=\"" + reference +
         "\"/></a:graphicData></a:graphic></xdr:graphicFrame><xdr:clientData/></xdr:absoluteAnchor>";
}

// --- The file --------------------------------------------------------------------------------------------

class Saving {
 public:
  explicit Saving(excel::Workbook& workbook) : workbook_(workbook) {}

  std::string Bytes() {
    References references;
    std::string sheets;
    for (std::int32_t number = 1; number <= workbook_.Worksheets()->Count(); ++number) {
      const auto sheet = workbook_.Worksheets()->Item(number);
      const std::string name = "sheet" + std::to_string(number) + ".xml";
      AddSheet(name, *sheet);
      sheets += "<sheet name=\"" + Escaped(sheet->Name()) + "\" sheetId=\"" + std::to_string(number) +
                "\" r:id=\"" + references.Add("worksheet", "worksheets/" + name) + "\"/>";
    }
    references.Add("styles", "styles.xml");
    AddPart(
        "xl/styles.xml", "spreadsheetml.styles+xml",
        "<styleSheet" + kMain +
            "><fonts count=\"1\"><font/></fonts><fills count=\"1\"><fill><patternFill "
            "patternType=\"none\"/></fill></fills><borders "
            "count=\"1\"><border/></borders><cellStyleXfs count=\"1\"><xf/></cellStyleXfs><cellXfs "
            "count=\"2\"><xf/><xf numFmtId=\"14\" applyNumberFormat=\"1\"/></cellXfs><cellStyles "
            "count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles></styleSheet>");
    AddPart("xl/workbook.xml", "spreadsheetml.sheet.main+xml",
            "<workbook" + kMain + kLinks + "><sheets>" + sheets + "</sheets></workbook>");
    archive_.Add("xl/_rels/workbook.xml.rels", references.Part());
    References package;
    package.Add("officeDocument", "xl/workbook.xml");
    archive_.Add("_rels/.rels", package.Part());
    archive_.Add("[Content_Types].xml",
                 kHead + "<Types xmlns=\"" + kFormats +
                     "package/2006/content-types\"><Default Extension=\"rels\" "
                     "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>" +
                     types_ + "</Types>");
    return archive_.Bytes();
  }

 private:
  void AddPart(const std::string& path, const std::string& type, const std::string& content) {
    archive_.Add(path, content.starts_with(kHead) ? content : kHead + content);
    types_ += "<Override PartName=\"/" + path + "\" ContentType=\"" + kMedia + type + "\"/>";
  }

  void AddSheet(const std::string& name, excel::Worksheet& sheet) {
    References references;
    const std::string drawing = DrawingOf(sheet);
    std::string link;
    if (!drawing.empty())
      link = "<drawing r:id=\"" + references.Add("drawing", "../drawings/" + drawing) + "\"/>";
    AddPart("xl/worksheets/" + name, "spreadsheetml.worksheet+xml",
            "<worksheet" + kMain + kLinks + "><sheetData>" + RowsPart(sheet) + "</sheetData>" + link +
                "</worksheet>");
    if (!drawing.empty()) archive_.Add("xl/worksheets/_rels/" + name + ".rels", references.Part());
  }

  // The name of the part with the sheet's charts; empty where it has none.
  std::string DrawingOf(excel::Worksheet& sheet) {
    References references;
    std::string anchors;
    const auto shapes = sheet.Shapes();
    for (std::int32_t i = 1; i <= shapes->Count(); ++i) {
      const auto shape = shapes->Item(i);
      if (shape->Type() != excel::msoChart) continue;
      const std::string name = "chart" + std::to_string(++charts_) + ".xml";
      AddPart("xl/charts/" + name, "drawingml.chart+xml", ChartPart(*shape->Chart()));
      anchors += AnchorPart(*shape, charts_, references.Add("chart", "../charts/" + name));
    }
    if (anchors.empty()) return "";
    const std::string name = "drawing" + std::to_string(++drawings_) + ".xml";
    AddPart("xl/drawings/" + name, "drawing+xml",
            "<xdr:wsDr xmlns:xdr=\"" + kFormats + "drawingml/2006/spreadsheetDrawing\" xmlns:a=\"" +
                kFormats + "drawingml/2006/main\" xmlns:c=\"" + kFormats + "drawingml/2006/chart\"" + kLinks +
                ">" + anchors + "</xdr:wsDr>");
    archive_.Add("xl/drawings/_rels/" + name + ".rels", references.Part());
    return name;
  }

  excel::Workbook& workbook_;
  StoredArchive archive_;
  std::string types_;
  int charts_ = 0;
  int drawings_ = 0;
};

Variant SaveAs(const automation_server::ObjectPtr& object, std::span<Variant> arguments) {
  if (arguments[1].ToInt32() != kXlsx)
    throw RuntimeError(kCannotSave, "It is saved as .xlsx alone, which is 51");
  SaveWorkbook(dynamic_cast<excel::Workbook&>(*object), arguments[0].ToText());
  return {};
}

}  // namespace

void SaveWorkbook(excel::Workbook& workbook, const std::string& file) {
  const std::string bytes = Saving(workbook).Bytes();
  std::ofstream stream(std::filesystem::path(WideText(file)), std::ios::binary | std::ios::trunc);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!stream.flush()) throw RuntimeError(kCannotSave, file + " cannot be written");
}

void LetWorkbooksBeSaved() {
  using namespace automation_server;
  std::vector<Member> members = ClassNamed("Workbook")->members();
  members.push_back({.name = "SaveAs",
                     .kind = Member::Kind::kMethod,
                     .parameters = {{.name = "Filename", .type = ValueType::kText},
                                    {.name = "FileFormat", .type = ValueType::kLong, .default_value = kXlsx}},
                     .get = SaveAs});
  const auto is_workbook = [](const Object& object) {
    return dynamic_cast<const excel::Workbook*>(&object) != nullptr;
  };
  AddClass(Class("Workbook", typeid(excel::Workbook), is_workbook, nullptr, std::move(members)));
}

}  // namespace mirelo::testing
