#include <gmock/gmock.h>

#include <cstdint>
#include <cstdio>

#include "adapters/workbook/xlsx/workbook_writer.h"
#include "host/excel/border.h"
#include "host/excel/comment.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"
#include "host/excel/shape.h"
#include "workbook/calc_chart.h"
#include "workbook/calc_document.h"
#include "workbook/chart_models.h"
#include "workbook/script.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using namespace host::excel;
using workbook::Spreadsheet;

constexpr const char* kCalcTable = "Dovanta2_Quotes";
constexpr const char* kHistory = "Quotes_Vertical(MSFT)";

constexpr std::int32_t kHistoryRows = 36'000;  // formatted; most are empty

struct Format {
  const char* column;
  const char* number_format;
  std::int32_t alignment;
};
constexpr Format kFormats[] = {{"Date", "mm/dd/yyyy", -4108},
                               {"Time", "hh:mm:ss", -4108},
                               {"Last", "0.00", 1},
                               {"Volume", "#,##0", 1},
                               {"Change", "+ 0.00;- 0.00", -4108}};

VariantArray Headers() {
  return VariantArray::OfTexts({"Ticker", "Date", "Time", "Last", "Volume", "Change"});
}

void FormatColumns(Range& first, std::int32_t rows) {
  for (std::int32_t column = 2; column <= 6; ++column) {
    const auto cells = first.Item(1, column)->Resize(rows, 1);
    cells->NumberFormat(kFormats[column - 2].number_format);
    cells->HorizontalAlignment(kFormats[column - 2].alignment);
  }
  const auto conditions = first.Item(1, 6)->Resize(rows, 1)->FormatConditions();
  conditions->Add(xlCellValue, xlGreater, "0")->Font()->ColorIndex(10);
  conditions->Add(xlCellValue, xlLess, "0")->Font()->ColorIndex(3);
}

void WriteQuotes(Range& first) {
  const struct {
    const char* ticker;
    double date;
    double time;
    Variant last;
    std::int32_t volume;
    double change;
  } quotes[] = {{"MSFT", 40563, 0.3585995370370370, 28.35, 58'613'600, -0.3},
                {"IBM", 40563, 0.5, 155.69, 7'880'500, 0},
                {"=1+1", 40564, 0.999988425925926, "n/a", 0, 12.345}};
  std::int32_t row = 1;
  for (const auto& quote : quotes) {
    first.Item(row, 1)->Value(quote.ticker);
    first.Item(row, 2)->Value(quote.date);
    first.Item(row, 3)->Value(quote.time);
    first.Item(row, 4)->Value(quote.last);
    first.Item(row, 5)->Value(quote.volume);
    first.Item(row, 6)->Value(quote.change);
    ++row;
  }
}

// The quote table of a working day, and one ticker's history.
Spreadsheet WorkingDay() {
  auto spreadsheet = Spreadsheet::New();
  const auto history = BookOf(spreadsheet)->Worksheets()->Add();
  history->Name(kHistory);
  history->Range("A1")->Value("Ticker:");
  history->Range("B1")->Value("MSFT");
  history->Range("A2:F2")->Value(Headers());
  FormatColumns(*history->Range("A3"), kHistoryRows);
  WriteQuotes(*history->Range("A3"));
  const auto box = history->Range("D2")->AddComment("Charts (Last & Volume)")->Shape();
  box->ScaleHeight(0.43, msoFalse);
  box->ScaleWidth(1.48, msoFalse);

  const auto table = BookOf(spreadsheet)->Worksheets()->Add();
  table->Name(kCalcTable);
  table->Range("A1")->Value("SnapShot( 60 sec)");
  const auto header = table->Range("A2:F2");
  header->Value(Headers());
  header->Font()->ColorIndex(2);
  header->Font()->Bold(true);
  header->Interior()->ColorIndex(11);
  header->HorizontalAlignment(xlHAlignCenter);
  FormatColumns(*table->Range("A3"), 3);
  WriteQuotes(*table->Range("A3"));
  table->Range("A3:F3")->Interior()->ColorIndex(36);
  const auto frame = table->Range("A2:F5")->Borders(xlEdgeTop);
  frame->Weight(xlMedium);
  frame->ColorIndex(16);
  table->Range("A2:F5")->Borders(xlInsideHorizontal)->ColorIndex(15);
  table->Range("A2:F5")->EntireColumn()->AutoFit();
  return spreadsheet;
}

// The fields of a file of comma-separated values.
std::vector<std::vector<std::string>> FieldsOf(const std::string& csv) {
  std::vector<std::vector<std::string>> lines(1, {""});
  bool is_quoted = false;
  for (const char c : csv) {
    if (c == '"') {
      is_quoted = !is_quoted;
    } else if (c == ',' && !is_quoted) {
      lines.back().emplace_back();
    } else if (c == '\n' && !is_quoted) {
      lines.push_back({""});
    } else {
      lines.back().back() += c;
    }
  }
  lines.pop_back();
  return lines;
}

class LibreOffice : public WorkbookFiles {
 protected:
  // Every cell of a sheet shows the same text there as here.
  void ExpectShownTexts(const Spreadsheet& spreadsheet, const std::string& name) const {
    SCOPED_TRACE(name);
    const auto sheet = BookOf(spreadsheet)->Worksheets()->Item(name);
    const auto lines = FieldsOf(BytesOf(folder.path() / ("quotes-" + name + ".csv")));
    ASSERT_GE(lines.size(), 5u);
    for (std::int32_t row = 1; row <= 5; ++row) {
      for (std::int32_t column = 1; column <= 6; ++column) {
        const auto cell = sheet->Cells(row, column);
        EXPECT_EQ(lines[static_cast<std::size_t>(row - 1)][static_cast<std::size_t>(column - 1)],
                  cell->Text())
            << cell->Address();
      }
    }
  }
};

void ExpectValues(const CalcDocument& document, const std::string& sheet) {
  SCOPED_TRACE(sheet);
  const struct {
    std::int32_t row;
    std::int32_t column;
    const char* type;
    const char* value;
    const char* text;
  } cells[] = {
      {3, 1, "string", "", "MSFT"},
      {3, 2, "date", "2011-01-20", "01/20/2011"},
      {3, 3, "time", "PT08H36M23S", "08:36:23"},
      {3, 4, "float", "28.35", "28.35"},
      {3, 5, "float", "58613600", "58,613,600"},
      {3, 6, "float", "-0.3", "- 0.30"},
      {4, 6, "float", "0", "+ 0.00"},
      {5, 1, "string", "", "=1+1"},
      {5, 4, "string", "", "n/a"},
      {5, 6, "float", "12.345", "+ 12.35"},
  };
  for (const auto& [row, column, type, value, text] : cells) {
    SCOPED_TRACE(std::to_string(row) + ", " + std::to_string(column));
    const CalcDocument::Cell cell = document.At(sheet, row, column);
    EXPECT_EQ(cell.type, type);
    EXPECT_EQ(cell.value.substr(0, std::string_view(value).size()), value);
    EXPECT_EQ(cell.text, text);
    EXPECT_FALSE(cell.has_formula);
  }
}

void ExpectLooks(const CalcDocument& document) {
  const auto look = [&](std::int32_t row, std::int32_t column, std::string_view property) {
    return document.Property(document.At(kCalcTable, row, column), property);
  };
  EXPECT_EQ(look(2, 3, "fo:color"), "#ffffff");
  EXPECT_EQ(look(2, 3, "fo:font-weight"), "bold");
  EXPECT_EQ(look(2, 3, "fo:background-color"), "#000080");
  EXPECT_EQ(look(2, 3, "fo:text-align"), "center");
  EXPECT_EQ(look(2, 3, "fo:border-top"), "1.76pt solid #808080");
  EXPECT_EQ(look(3, 3, "fo:border-top"), "0.74pt solid #c0c0c0");
  EXPECT_EQ(look(3, 1, "fo:background-color"), "#ffff99");
  EXPECT_EQ(look(3, 1, "fo:font-weight"), "normal");
  EXPECT_NE(look(4, 1, "fo:background-color"), "#ffff99");
  EXPECT_EQ(look(3, 2, "fo:text-align"), "center");
}

void ExpectConditions(const CalcDocument& document, const std::string& sheet, const std::string& cells) {
  SCOPED_TRACE(sheet);
  const auto conditions = document.Conditions(sheet);
  ASSERT_EQ(conditions.size(), 2u);
  EXPECT_THAT(conditions[0].cells, ::testing::EndsWith(cells));
  EXPECT_EQ(conditions[0].comparison, ">0");
  EXPECT_EQ(conditions[0].color, "#008000");
  EXPECT_EQ(conditions[1].comparison, "<0");
  EXPECT_EQ(conditions[1].color, "#ff0000");
}

void ExpectComment(const CalcDocument& document, const Spreadsheet& spreadsheet) {
  const CalcDocument::Cell cell = document.At(kHistory, 2, 4);
  EXPECT_EQ(cell.comment, "Charts (Last & Volume)");
  const auto box = BookOf(spreadsheet)->Worksheets()->Item(kHistory)->Range("D2")->Comment()->Shape();
  // Its width there hangs on the widths of columns, and they on the fonts of the machine.
  EXPECT_NEAR(cell.comment_height, box->Height(), 0.75);
  EXPECT_FALSE(document.At(kHistory, 2, 5).comment.has_value());
}

// One test, since starting the other program takes most of the time. The rows that a history has yet to fill
// have their formats by that of the column.
TEST_F(LibreOffice, OpensASavedFileAndSeesWhatIsInIt) {
  auto spreadsheet = WorkingDay();
  spreadsheet.Save(File());
  ConvertWithCalc(File(), "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,true,false,false,-1");
  ConvertWithCalc(File(), "ods");

  ExpectShownTexts(spreadsheet, kCalcTable);
  ExpectShownTexts(spreadsheet, kHistory);

  const CalcDocument document(Unzip(BytesOf(File("quotes.ods"))));
  EXPECT_THAT(document.Sheets(), ElementsAre(kCalcTable, kHistory, "Sheet1"));
  ExpectValues(document, kCalcTable);
  ExpectValues(document, kHistory);
  ExpectLooks(document);
  ExpectConditions(document, kCalcTable, ".F5");
  ExpectConditions(document, kHistory, ".F36002");
  ExpectComment(document, spreadsheet);
  EXPECT_EQ(document.Property(document.At(kHistory, 100, 2), "fo:text-align"), "center");
  EXPECT_EQ(document.Property(document.At(kHistory, kHistoryRows + 2, 2), "fo:text-align"), "center");
  EXPECT_EQ(document.Property(document.At(kHistory, kHistoryRows + 3, 2), "fo:text-align"), "");
}

void ExpectTickerChart(const CalcChart& chart, const char* title, const char* kind, const char* column) {
  SCOPED_TRACE(title);
  const std::string cells = std::string("'") + kHistory + "'." + column;
  EXPECT_EQ(chart.Class(), kind);
  EXPECT_EQ(chart.Title(), title);
  EXPECT_EQ(chart.Cells(), cells + "3:" + cells + "7");
  EXPECT_FALSE(chart.HasLegend());
  EXPECT_FALSE(chart.HasAxis("x"));
  EXPECT_FALSE(chart.HasAxis("y"));
  EXPECT_EQ(chart.TitleProperty("draw:fill-color"), "#008000");
  EXPECT_EQ(chart.TitleProperty("fo:color"), "#ffff00");
  EXPECT_EQ(chart.TitleProperty("fo:font-size"), "8pt");
  EXPECT_EQ(chart.GridProperty("svg:stroke-color"), "#808080");
  EXPECT_EQ(chart.GridProperty("draw:stroke"), "dash");
  EXPECT_EQ(chart.AreaGradient(), CalcChart::Gradient("#666699", "#666699"));
  EXPECT_EQ(chart.PlotGradient(), CalcChart::Gradient("#9999ff", "#ccccff"));
}

// Pictures as tall as charts, in the folder.
int CountPictures(const std::filesystem::path& folder) {
  constexpr std::uint32_t kPixels = 101;
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".png") continue;
    const std::string bytes = BytesOf(entry.path());
    std::uint32_t height = 0;
    for (std::size_t i = 20; i < 24 && i < bytes.size(); ++i)
      height = height << 8 | static_cast<unsigned char>(bytes[i]);
    if (height == kPixels || height == kPixels + 1) ++count;
  }
  return count;
}

TEST_F(LibreOffice, DrawsTheChartsOfASavedFile) {
  const auto book = BookWithHistory(5);
  AddTickerCharts(book->sheets.front(), 5);
  workbook::WriteWorkbook(*book, File());
  ConvertWithCalc(File(), "ods");
  ConvertWithCalc(File(), "html");

  const Parts parts = Unzip(BytesOf(File("quotes.ods")));
  const CalcChart prices(parts, 1);
  ExpectTickerChart(prices, "Last", "chart:line", "D");
  EXPECT_EQ(prices.SeriesProperty("chart:symbol-name"), "diamond");
  EXPECT_EQ(prices.SeriesProperty("chart:symbol-width"), "0.212cm") << "6 points";
  EXPECT_THAT(prices.PointProperties("svg:stroke-color"),
              ElementsAre("#808080", "#808080", "#008000", "#008000", "#993300"));

  const CalcChart volumes(parts, 2);
  ExpectTickerChart(volumes, "LastVolume", "chart:bar", "E");
  EXPECT_THAT(volumes.PointProperties("svg:stroke-color"),
              ElementsAre("#808080", "#008000", "#993300", "#008000", "#993300"));
  EXPECT_THAT(volumes.PointProperties("draw:fill-color"),
              ElementsAre("#c0c0c0", "#00ff00", "#ff0000", "#00ff00", "#ff0000"));
  EXPECT_EQ(CountPictures(folder.path()), 2);
}

}  // namespace
}  // namespace mirelo::testing
