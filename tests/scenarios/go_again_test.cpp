// Go, save, load, look into the dialog, and Go again: what nobody changed stays as it is.

#include <algorithm>
#include <fstream>
#include <iterator>
#include <ostream>

#include "automation/text.h"
#include "host/excel/comment.h"
#include "scenarios/go_again.h"
#include "scenarios/sheet_look.h"
#include "snapshot/column_names.h"
#include "workbook/package_builder.h"

namespace mirelo::testing {
namespace {

using ::testing::IsEmpty;

constexpr const char* kAllColumns =
    "Ticker,Date,Time,Last,Bid,Ask,Change,Tick,Volume,High,Low,BidSize,AskSize,LastVolume,AvgTrade,"
    "NumTrades,Open,52w Low,52w High";

class SecondGo : public GoAgain {
 protected:
  // The parts of the file but for that which says when it was written.
  Parts FileParts() const {
    std::ifstream in(File(), std::ios::binary);
    Parts parts = Unzip(std::string(std::istreambuf_iterator<char>(in), {}));
    EXPECT_EQ(parts.erase("docProps/core.xml"), 1U);
    return parts;
  }
  static Texts DifferentParts(const Parts& before, const Parts& after) {
    Texts names;
    for (const auto& [name, text] : before) {
      const auto found = after.find(name);
      if (found == after.end() || found->second != text) names.push_back(name);
    }
    for (const auto& [name, text] : after) {
      if (!before.contains(name)) names.push_back(name);
    }
    return names;
  }
  // The section "Settings" as "key=value".
  static Texts Settings() {
    Array<std::string> keys;
    EXPECT_TRUE(mGlobal::AppSettings().GetAllKeys("Settings", keys));
    Texts settings;
    for (std::int32_t i = keys.LBound(); i <= keys.UBound(); ++i)
      settings.push_back(keys(i) + "=" + Stored("Settings", keys(i).c_str()).ToText());
    std::sort(settings.begin(), settings.end());
    return settings;
  }
  // The grid's texts, row by row, and the list of columns behind them.
  static Texts Shown(const frmMirelo& form) {
    Texts shown;
    for (std::int32_t row = 0; row < form.FG.Rows(); ++row) {
      for (std::int32_t col = 0; col < form.FG.Cols(); ++col) {
        const std::string& text = form.FG.TextMatrix(row, col);
        shown.push_back(text == "0" ? "" : text);  // not ticked, either way
      }
    }
    for (const std::string& column : form.ListRight.Items()) shown.push_back(column);
    shown.push_back(form.txtSec.Text() + "/" + std::to_string(form.chkUpdOrNot.Value()) + "/" +
                    (form.ComQuoteSource.Enabled() ? form.ComQuoteSource.Text() : ""));
    return shown;
  }
};

struct Case {
  const char* name;
  std::int32_t result;
  std::vector<std::pair<const char*, Variant>> settings;
  const char* columns;
  std::function<void(frmMirelo& form)> acts;
  Texts changed_parts = {};  // of the file
};
void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

class Unchanged : public SecondGo, public ::testing::WithParamInterface<Case> {
 protected:
  // The columns that are not among these, as the dialog lists them.
  static std::string Others(const std::string& columns) {
    const Texts shown = Split(columns, ",");
    Texts others;
    for (const std::string& column : Split(kAllColumns, ",")) {
      if (std::find(shown.begin(), shown.end(), column) == shown.end()) others.push_back(column);
    }
    return Join(others, ",");
  }
};

TEST_P(Unchanged, ChangesNothing) {
  const Case& c = GetParam();
  for (const auto& [key, value] : c.settings) Save(key, value);
  Save("ListRight", c.columns);
  Save("ListLeft", Others(c.columns));

  Texts first_dialog;
  ASSERT_EQ(Go([&](frmMirelo& form) {
              AddTickers(form, {"MSFT", "IBM", "BRK.B"});
              c.acts(form);
              first_dialog = Shown(form);
            }),
            c.result);
  const SheetLook built = LookOf(*Book());
  const Parts saved = FileParts();
  const Texts stored = Settings();

  Texts second_dialog;
  ASSERT_EQ(Go([&](frmMirelo& form) {
              EXPECT_THAT(Differences(built, LookOf(*Book())), IsEmpty()) << "saved and loaded";
              second_dialog = Shown(form);
            }),
            c.result);
  EXPECT_EQ(second_dialog, first_dialog);
  EXPECT_THAT(Differences(built, LookOf(*Book())), IsEmpty());
  EXPECT_EQ(DifferentParts(saved, FileParts()), c.changed_parts);
  EXPECT_EQ(Settings(), stored);
  EXPECT_GT(built.size(), 10U);
}

const Case kCases[]{
    {"WithAllColumnsFieldsAndCharts",
     78,
     {{"BuildCharts", 1}, {"RowsLimit", 30}, {"txtDecimalPlaces", 4}, {"Style", "Green"}},
     kAllColumns,
     [](frmMirelo& form) { GoAgain::TickAll(form); },
     // Which sheet is in front: asked about its charts, the person kept those of the first ticker.
     {"xl/workbook.xml", "xl/worksheets/sheet1.xml", "xl/worksheets/sheet3.xml"}},
    {"WithSomeFieldsOfSomeTickers",
     78,
     {{"RowsLimit", 5}, {"Style", "Yellow"}, {"txtVerticalSheet", "My history "}},
     "Ticker,Last,Change,LastVolume,52w High",
     [](frmMirelo& form) {
       GoAgain::Tick(form, 1, "Change");
       GoAgain::Tick(form, 1, "LastVolume");
       GoAgain::Tick(form, 3, "Last");
     }},
    {"WithoutStyleAndOnce",
     78,
     {{"UpdateEvery", 0}, {"Style", "None"}, {"RowsLimit", 5}},
     "Ticker,Bid,Ask,Change",
     [](frmMirelo& form) { GoAgain::Tick(form, 2, "Ask"); }},
    {"WithoutVerticalTables",
     78,
     {{"VerticalTable", 0}, {"Seconds", 15}},
     "Ticker,Last,Date,Time",
     [](frmMirelo&) {}},
    {"ByStream",
     77,
     {{"Seconds", 0}, {"VerticalTable", 0}},
     "Last,Ticker",
     [](frmMirelo& form) { form.ComQuoteSource.ListIndex(3); }},
};

INSTANTIATE_TEST_SUITE_P(All, Unchanged, ::testing::ValuesIn(kCases),
                         [](const auto& test) { return test.param.name; });

// Formats down 36,000 rows: too many cells to look at one by one, but the file tells.
TEST_F(SecondGo, ChangesNothingOfAFileWithoutALimitOfRows) {
  Save("ListRight", "Ticker,Last,Change,LastVolume");
  Save("RowsLimit", 0);
  Go([](frmMirelo& form) {
    AddTickers(form, {"MSFT", "IBM"});
    TickAll(form);
  });
  ASSERT_EQ(Vertical("IBM")->Range("A36002")->NumberFormat(), Variant("0.00"));
  const Parts saved = FileParts();
  Go();
  EXPECT_THAT(DifferentParts(saved, FileParts()), IsEmpty());
}

// What the macros wrote meanwhile

TEST_F(SecondGo, TakesTheQuotesOfTheTableAndKeepsTheHistory) {
  Save("ListRight", "Ticker,Last,Change");
  Save("RowsLimit", 10);
  Go([](frmMirelo& form) {
    AddTickers(form, {"MSFT", "IBM"});
    TickAll(form);
  });
  const SheetLook built = LookOf(*Table());
  Edit([&] {
    Table()->Range("B3")->Value(26.5);
    Table()->Range("C4")->Value(-0.25);
    for (const char* ticker : {"MSFT", "IBM"}) {
      for (std::int32_t row = 3; row < 9; ++row) {
        Vertical(ticker)->Cells(row, 1)->Value(26.5 + row);
        Vertical(ticker)->Cells(row, 2)->Value(0.25 - row);
      }
    }
  });
  const SheetLook msft = LookOf(*Vertical("MSFT"));
  const SheetLook ibm = LookOf(*Vertical("IBM"));
  Go();
  EXPECT_THAT(Differences(built, LookOf(*Table())), IsEmpty());
  EXPECT_THAT(Differences(msft, LookOf(*Vertical("MSFT"))), IsEmpty());
  EXPECT_THAT(Differences(ibm, LookOf(*Vertical("IBM"))), IsEmpty());
  EXPECT_EQ(Vertical("IBM")->Range("A8")->Value(), Variant(34.5));
}

// The dialog finds the mark of charts from the field on its left, and there is none: the ticker's charts are
// lost with the second Go.
TEST_F(SecondGo, LosesTheChartsOfATickerWhoseOneFieldOfChartsStandsFirst) {
  Save("ListRight", "Ticker,Last,LastVolume,Bid");
  Save("BuildCharts", 1);
  Save("RowsLimit", 10);
  Go([](frmMirelo& form) {
    AddTickers(form, {"MSFT"});
    TickAll(form);
    form.FG.UserClickCell(1, 3);  // LastVolume goes
    form.FG.TextMatrix(1, form.FG.Cols() - 1, "-1");
  });
  ASSERT_NE(Vertical("MSFT")->Range("A2")->Comment(), nullptr);
  Go([](frmMirelo& form) { EXPECT_NE(form.FG.TextMatrix(1, form.FG.Cols() - 1), "-1"); });
  EXPECT_EQ(Vertical("MSFT")->Range("A2")->Comment(), nullptr);
}

}  // namespace
}  // namespace mirelo::testing
