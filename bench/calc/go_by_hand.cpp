#include "calc/go_by_hand.h"

#include <array>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/awt/Size.hpp>
#include <com/sun/star/beans/XMultiPropertySet.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameContainer.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/lang/Locale.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/ConditionOperator.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSheetAnnotationAnchor.hpp>
#include <com/sun/star/sheet/XSheetAnnotationShapeSupplier.hpp>
#include <com/sun/star/sheet/XSheetAnnotations.hpp>
#include <com/sun/star/sheet/XSheetAnnotationsSupplier.hpp>
#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <com/sun/star/sheet/XSheetConditionalEntries.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/style/XStyleFamiliesSupplier.hpp>
#include <com/sun/star/table/BorderLineStyle.hpp>
#include <com/sun/star/table/CellHoriJustify.hpp>
#include <com/sun/star/table/TableBorder2.hpp>
#include <com/sun/star/table/XColumnRowRange.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>
#include <initializer_list>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "uno/text.h"

namespace mirelo {

namespace {

using css::table::BorderLine2;
using css::table::CellHoriJustify_CENTER;
using css::table::CellHoriJustify_STANDARD;
using css::table::CellRangeAddress;
using css::table::TableBorder2;
using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;
using uno::OfficeText;
using Office = Reference<css::sheet::XSpreadsheetDocument>;
using Sheet = Reference<css::sheet::XSpreadsheet>;

constexpr std::array kFields{"Date",    "Time",       "Last",     "Bid",       "Ask",
                             "Change",  "Volume",     "High",     "Low",       "BidSize",
                             "AskSize", "LastVolume", "AvgTrade", "NumTrades", "Open"};
constexpr std::array kColumns{"Ticker",   "Date",      "Time", "Last",    "Bid",     "Ask",     "Change",
                              "Tick",     "Volume",    "High", "Low",     "BidSize", "AskSize", "LastVolume",
                              "AvgTrade", "NumTrades", "Open", "52w Low", "52w High"};
constexpr std::array kMarked{2, 11};  // the fields that are drawn by charts
constexpr std::int32_t kHistoryRows = 20;
constexpr const char* kMark = "Charts (Last & Volume)";
const css::awt::Size kMarkSize(5001, 847);
constexpr sal_Int32 kWhite = 0xFFFFFF;
constexpr sal_Int32 kGround = 0x666699;
constexpr sal_Int32 kLineColor = 0xC0C0C0;
constexpr sal_Int32 kFrameColor = 0x808080;
constexpr sal_Int32 kOddRow = 0xCCCCFF;
constexpr sal_Int16 kThin = 26;
constexpr sal_Int16 kMedium = 62;

template <class Interface, class Held>
Reference<Interface> Of(const Held& held) {
  return Reference<Interface>(held, UNO_QUERY_THROW);
}

template <class Value>
void Put(const Reference<css::uno::XInterface>& object, const char* name, const Value& value) {
  Of<css::beans::XPropertySet>(object)->setPropertyValue(OfficeText(name), Any(value));
}

// Sorted by name, as the office asks.
struct Properties {
  Sequence<rtl::OUString> names;
  Sequence<Any> values;

  Properties(std::initializer_list<std::pair<const char*, Any>> all)
      : names(static_cast<sal_Int32>(all.size())), values(static_cast<sal_Int32>(all.size())) {
    sal_Int32 i = 0;
    for (const auto& [name, value] : all) {
      names.getArray()[i] = OfficeText(name);
      values.getArray()[i++] = value;
    }
  }
  void PutInto(const Reference<css::uno::XInterface>& cells) const {
    Of<css::beans::XMultiPropertySet>(cells)->setPropertyValues(names, values);
  }
};

BorderLine2 Line(sal_Int16 width, sal_Int32 color) {
  BorderLine2 line;
  line.Color = color;
  line.LineStyle = css::table::BorderLineStyle::SOLID;
  line.OuterLineWidth = width;
  line.LineWidth = static_cast<sal_uInt32>(width);
  return line;
}

TableBorder2 Border(const BorderLine2& around, const BorderLine2& within, bool has_rows) {
  TableBorder2 border;
  border.LeftLine = border.RightLine = border.TopLine = border.BottomLine = around;
  border.IsLeftLineValid = border.IsRightLineValid = border.IsTopLineValid = border.IsBottomLineValid = true;
  border.VerticalLine = within;
  border.IsVerticalLineValid = true;
  if (has_rows) border.HorizontalLine = within;
  border.IsHorizontalLineValid = has_rows;
  return border;
}

// Runs of columns that have the same format.
struct Run {
  sal_Int32 first;
  sal_Int32 last;
};

class Making {
 public:
  explicit Making(const Office& document)
      : document_(document),
        sheets_(document->getSheets()),
        factory_(Of<css::lang::XMultiServiceFactory>(document)),
        prices_{{"NumberFormat", Format("0.00")}},
        counts_{{"NumberFormat", Format("#,##0")}},
        dates_{{"HoriJustify", Any(CellHoriJustify_CENTER)}, {"NumberFormat", Format("mm/dd/yyyy")}},
        times_{{"HoriJustify", Any(CellHoriJustify_CENTER)}, {"NumberFormat", Format("hh:mm:ss")}},
        changes_{{"ConditionalFormat", Conditions()},
                 {"HoriJustify", Any(CellHoriJustify_CENTER)},
                 {"NumberFormat", Format("+ 0.00;- 0.00")}},
        history_header_{
            {"CellBackColor", Any(kGround)},
            {"CharColor", Any(kWhite)},
            {"CharWeight", Any(float{css::awt::FontWeight::BOLD})},
            {"TableBorder2", Any(Border(Line(kThin, kLineColor), Line(kThin, kLineColor), false))}},
        table_header_{{"CellBackColor", Any(kGround)},
                      {"CharColor", Any(kWhite)},
                      {"CharWeight", Any(float{css::awt::FontWeight::BOLD})},
                      {"HoriJustify", Any(CellHoriJustify_CENTER)}} {}

  void History(const std::string& ticker, sal_Int16 place) const {
    const rtl::OUString name = OfficeText("Quotes_Vertical(" + ticker + ")");
    sheets_->insertNewByName(name, place);
    const auto sheet = Of<css::sheet::XSpreadsheet>(sheets_->getByName(name));
    const auto width = static_cast<sal_Int32>(kFields.size());
    Sequence<Any> first(width);
    Sequence<Any> second(width);
    for (sal_Int32 i = 0; i < width; ++i) {
      first.getArray()[i] <<= rtl::OUString();
      second.getArray()[i] <<= OfficeText(kFields[static_cast<std::size_t>(i)]);
    }
    first.getArray()[0] <<= rtl::OUString("Ticker:");
    first.getArray()[1] <<= OfficeText(ticker);
    const std::array rows{first, second};
    Of<css::sheet::XCellRangeData>(sheet->getCellRangeByPosition(0, 0, width - 1, 1))
        ->setDataArray({rows.data(), rows.size()});

    prices_.PutInto(Cells(place, 2, kHistoryRows + 1, {{2, 4}, {7, 8}, {14, 14}}));
    counts_.PutInto(Cells(place, 2, kHistoryRows + 1, {{6, 6}, {9, 13}}));
    dates_.PutInto(sheet->getCellRangeByPosition(0, 2, 0, kHistoryRows + 1));
    times_.PutInto(sheet->getCellRangeByPosition(1, 2, 1, kHistoryRows + 1));
    changes_.PutInto(sheet->getCellRangeByPosition(5, 2, 5, kHistoryRows + 1));
    history_header_.PutInto(sheet->getCellRangeByPosition(0, 1, width - 1, 1));

    const auto comments = Of<css::sheet::XSheetAnnotationsSupplier>(sheet)->getAnnotations();
    for (const sal_Int32 column : kMarked) {
      comments->insertNew({place, column, 1}, OfficeText(kMark));
      const auto cell = sheet->getCellByPosition(column, 1);
      const auto comment = Of<css::sheet::XSheetAnnotationAnchor>(cell)->getAnnotation();
      const auto box = Of<css::sheet::XSheetAnnotationShapeSupplier>(comment)->getAnnotationShape();
      Put(box, "TextAutoGrowHeight", false);
      box->setSize(kMarkSize);
    }
  }

  void QuoteTable(std::int32_t tickers, sal_Int16 place) const {
    const rtl::OUString name("Dovanta2_Quotes");
    sheets_->insertNewByName(name, place);
    const auto sheet = Of<css::sheet::XSpreadsheet>(sheets_->getByName(name));
    const auto width = static_cast<sal_Int32>(kColumns.size());
    Sequence<Sequence<Any>> rows(tickers + 2);
    for (sal_Int32 row = 0; row < tickers + 2; ++row) {
      Sequence<Any> cells(width);
      for (sal_Int32 i = 0; i < width; ++i)
        cells.getArray()[i] <<=
            row == 1 ? OfficeText(kColumns[static_cast<std::size_t>(i)]) : rtl::OUString();
      if (row == 0) cells.getArray()[0] <<= rtl::OUString("SnapShot( 60 sec)");
      if (row > 1) cells.getArray()[0] <<= OfficeText("TCK" + std::to_string(row - 1));
      rows.getArray()[row] = cells;
    }
    const sal_Int32 last = tickers + 1;
    Of<css::sheet::XCellRangeData>(sheet->getCellRangeByPosition(0, 0, width - 1, last))->setDataArray(rows);

    prices_.PutInto(Cells(place, 2, last, {{3, 5}, {9, 10}, {16, 18}}));
    counts_.PutInto(Cells(place, 2, last, {{8, 8}, {11, 15}}));
    dates_.PutInto(sheet->getCellRangeByPosition(1, 2, 1, last));
    times_.PutInto(sheet->getCellRangeByPosition(2, 2, 2, last));
    changes_.PutInto(sheet->getCellRangeByPosition(6, 2, 6, last));
    table_header_.PutInto(sheet->getCellRangeByPosition(0, 1, width - 1, 1));
    for (const auto& [from, color] : {std::pair{2, kOddRow}, std::pair{3, kWhite}}) {
      const auto striped = Ranges();
      for (sal_Int32 row = from; row <= last; row += 2)
        striped->addRangeAddress({place, 0, row, width - 1, row}, false);
      Put(striped, "CellBackColor", color);
    }
    Put(sheet->getCellRangeByPosition(0, 1, width - 1, last), "TableBorder2",
        Border(Line(kMedium, kFrameColor), Line(kThin, kLineColor), true));
    const auto table = sheet->getCellRangeByPosition(0, 0, width - 1, last);
    Put(Of<css::table::XColumnRowRange>(table)->getColumns(), "OptimalWidth", true);
  }

 private:
  Any Format(const char* code) const {
    const auto formats = Of<css::util::XNumberFormatsSupplier>(document_)->getNumberFormats();
    const css::lang::Locale locale("en", "US", "");
    const sal_Int32 known = formats->queryKey(OfficeText(code), locale, false);
    return Any(known >= 0 ? known : formats->addNew(OfficeText(code), locale));
  }

  // Of cells that rise and fall. One object serves all cells.
  Any Conditions() const {
    const auto styles = Of<css::container::XNameContainer>(
        Of<css::style::XStyleFamiliesSupplier>(document_)->getStyleFamilies()->getByName("CellStyles"));
    const auto entries = Of<css::sheet::XSheetConditionalEntries>(
        Of<css::beans::XPropertySet>(Cells(0, 0, 0, {{0, 0}}))->getPropertyValue("ConditionalFormat"));
    for (const auto& [name, color, op] :
         {std::tuple{"Mirelo #008000", sal_Int32{0x008000}, css::sheet::ConditionOperator_GREATER},
          std::tuple{"Mirelo #FF0000", sal_Int32{0xFF0000}, css::sheet::ConditionOperator_LESS}}) {
      const auto style = factory_->createInstance("com.sun.star.style.CellStyle");
      styles->insertByName(OfficeText(name), Any(style));
      Put(style, "CharColor", color);
      const std::array values{css::beans::PropertyValue("Operator", 0, Any(op), {}),
                              css::beans::PropertyValue("Formula1", 0, Any(rtl::OUString("0")), {}),
                              css::beans::PropertyValue("StyleName", 0, Any(OfficeText(name)), {})};
      entries->addNew(Sequence<css::beans::PropertyValue>(values.data(), values.size()));
    }
    return Any(entries);
  }

  Reference<css::sheet::XSheetCellRangeContainer> Ranges() const {
    return Of<css::sheet::XSheetCellRangeContainer>(
        factory_->createInstance("com.sun.star.sheet.SheetCellRanges"));
  }

  Reference<css::sheet::XSheetCellRangeContainer> Cells(sal_Int16 sheet, sal_Int32 first_row,
                                                        sal_Int32 last_row,
                                                        std::initializer_list<Run> columns) const {
    const auto ranges = Ranges();
    for (const Run& run : columns)
      ranges->addRangeAddress({sheet, run.first, first_row, run.last, last_row}, false);
    return ranges;
  }

  const Office document_;
  const Reference<css::sheet::XSpreadsheets> sheets_;
  const Reference<css::lang::XMultiServiceFactory> factory_;
  const Properties prices_;
  const Properties counts_;
  const Properties dates_;
  const Properties times_;
  const Properties changes_;
  const Properties history_header_;
  const Properties table_header_;
};

std::string Ticker(std::int32_t number) { return "TCK" + std::to_string(number); }

}  // namespace

// Histories are made behind each other, so that few sheets move. That of the last ticker stands in front.
void GoByHand(const Office& document, std::int32_t histories) {
  const auto model = Of<css::frame::XModel>(document);
  Put(document, "IsUndoEnabled", false);
  model->lockControllers();
  const Making making(document);
  for (std::int32_t i = 0; i < histories; ++i)
    making.History(Ticker(histories - i), static_cast<sal_Int16>(i));
  making.QuoteTable(histories, static_cast<sal_Int16>(histories));
  model->unlockControllers();
  Put(document, "IsUndoEnabled", true);
}

}  // namespace mirelo
