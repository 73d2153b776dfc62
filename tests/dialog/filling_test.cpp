#include <vector>

#include "automation/text.h"
#include "dialog/control_facts.h"
#include "dialog/dialog_test.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo::testing {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct ShownControl {
  const char* name;
  const char* value;
  bool enabled = true;
};

// What the dialog shows of the settings when it opens.
class Filling : public DialogTest {
 protected:
  static void ExpectShown(const frmMirelo& form, const std::vector<ShownControl>& expected) {
    for (const ShownControl& row : expected) {
      SCOPED_TRACE(row.name);
      EXPECT_EQ(ValueOf(*form.Find(row.name)), row.value);
      EXPECT_EQ(form.Find(row.name)->Enabled(), row.enabled);
    }
  }
  // Opens the dialog on these settings and looks.
  void ExpectShown(const std::vector<ShownControl>& expected) {
    Show([&](frmMirelo& form) { ExpectShown(form, expected); });
  }
};

TEST_F(Filling, ShowsTheDefaultsOfAnEmptyStore) {
  ExpectShown({
      {"ComDisplayTimezone", "(ET) US Eastern"},
      {"ComDisplayOffset", "0:00"},
      {"ComChartStyle", "Blue", false},
      {"chkBuildCharts", "0"},
      {"chkChartStyle", "1", false},
      {"chkColorPoints", "1", false},
      {"chkAddYAxis", "0", false},
      {"chkGreyOut", "1", false},
      {"txtChartPoints", "20", false},
      {"VScrollChartPoints", "20", false},
      {"txtDecimalPlaces", "2"},
      {"VScrollDecimalplaces", "2"},
      {"lblExample", "2.12"},
      {"txtVerticalSheet", "Quotes_Vertical"},
      {"lblExampleSheet", "Quotes_Vertical(Ticker)"},
      {"ComStyle", "Blue"},
      {"chkStyleOrNot", "1"},
      {"chkUpdOrNot", "1"},
      {"txtSec", "60"},
      {"VScrollSec", "60"},
      {"ButUpDate", "UpDate", false},
      {"chkVerTable", "1"},
      {"txtRows", "20"},
      {"VScrollRows", "20"},
      {"chkLimitRows", "1"},
      {"txtHTTPPort", "16239"},
      {"txtSocketPort", "16240"},
      {"txtWebAddress", "127.0.0.1"},
      {"ListLeft",
       "Tick,Volume,High,Low,BidSize,AskSize,LastVolume,AvgTrade,NumTrades,Open,52w Low,52w High"},
      {"ListRight", "Ticker,Last,Change,Bid,Ask,Date,Time"},
      {"ButRight", "", false},
      {"ButAllRight", "", false},
      {"ButLeft", "", false},
      {"ButAllLeft", "", false},
      {"ButDown", "", false},
      {"ButUp", "", false},
  });
  EXPECT_TRUE(Stored("Settings", "Seconds").IsEmpty()) << "showing the dialog stores nothing";
}

TEST_F(Filling, ShowsWhatTheStoreHolds) {
  const struct {
    const char* key;
    Variant value;
  } settings[] = {
      {"DisplayTimezone", "(ET+4) UTC"},
      {"DisplayOffset", "-1:30"},
      {"ChartStyle", "Green"},
      {"BuildCharts", 1},
      {"ColorPoints", 0},
      {"AddYAxis", 1},
      {"GreyOut", 0},
      {"ChartPoints", "30"},
      {"txtDecimalPlaces", 4},
      {"txtVerticalSheet", "  My Quotes "},
      {"Style", "Yellow"},
      {"UpdateEvery", 1},
      {"Seconds", "15"},
      {"VerticalTable", 0},
      {"RowsLimit", "50"},
      {"HTTPPort", "8080"},
      {"SocketPort", "8081"},
      {"Webaddress", "10.0.0.1"},
      {"ListLeft", "Tick,Volume"},
      {"ListRight", "Ticker,Last,Bid"},
  };
  for (const auto& setting : settings) Save(setting.key, setting.value);
  ExpectShown({
      {"ComDisplayTimezone", "(ET+4) UTC"},
      {"ComDisplayOffset", "-1:30"},
      {"ComChartStyle", "Green"},
      {"chkBuildCharts", "1"},
      {"chkChartStyle", "1"},
      {"chkColorPoints", "0"},
      {"chkAddYAxis", "1"},
      {"chkGreyOut", "0"},
      {"txtChartPoints", "30"},
      {"VScrollChartPoints", "30"},
      {"txtDecimalPlaces", "4"},
      {"lblExample", "2.1234"},
      {"txtVerticalSheet", "My Quotes"},
      {"lblExampleSheet", "My Quotes(Ticker)"},
      {"ComStyle", "Yellow"},
      {"chkStyleOrNot", "1"},
      {"chkUpdOrNot", "1"},
      {"txtSec", "15"},
      {"VScrollSec", "15"},
      {"chkVerTable", "0"},
      {"txtRows", "50", false},
      {"VScrollRows", "50", false},
      {"chkLimitRows", "1", false},
      {"txtHTTPPort", "8080"},
      {"txtSocketPort", "8081"},
      {"txtWebAddress", "10.0.0.1"},
      {"ListLeft", "Tick,Volume"},
      {"ListRight", "Ticker,Last,Bid"},
  });
}

TEST_F(Filling, ShowsNumbersWhicheverWayTheyAreStored) {
  for (const bool as_text : {false, true}) {
    SCOPED_TRACE(as_text ? "text" : "number");
    const auto both = [&](std::int32_t number) {
      return as_text ? Variant(std::to_string(number)) : Variant(number);
    };
    Save("BuildCharts", both(1));
    Save("Seconds", both(5));
    Save("HTTPPort", both(8080));
    Save("txtDecimalPlaces", both(3));
    ExpectShown(
        {{"chkBuildCharts", "1"}, {"txtSec", "5"}, {"txtHTTPPort", "8080"}, {"txtDecimalPlaces", "3"}});
  }
}

TEST_F(Filling, OffersTheSeventeenTimeZones) {
  Show([](frmMirelo& form) {
    EXPECT_THAT(form.ComDisplayTimezone.Items(),
                ElementsAre("(ET-1)Us Central", "(ET) US Eastern", "(ET+1) Argentina", "(ET+1) Brazil",
                            "(ET+4) GMT -1 (MoneyAM BF)", "(ET+4) UTC", "(ET+5) Europe GMT(UK/Portugal,etc)",
                            "(ET+5) GMT - No Daylight Savings", "(ET+6) Europe GET(France/Germany,etc)",
                            "(ET+6) South Africa(Johannesburg)", "(ET+7) Europe EET(Finland/Greece)",
                            "(ET+7) Middle East(Riyadh)", "(ET+9.5) India", "(ET+12) Singapore/Hong Kong",
                            "(ET+13) Japan/Korea", "(ET+14) Australia(Sydney)", "(ET+16) New ZealandTicker"));
  });
}

TEST_F(Filling, OffersHalfHoursFromAlmostADayAheadToAlmostADayBehind) {
  std::vector<std::string> expected;
  for (int hour = 23; hour >= 0; --hour) {
    expected.push_back(std::to_string(hour) + ":30");
    expected.push_back(std::to_string(hour) + ":00");
  }
  expected.push_back("-0:30");
  for (int hour = 1; hour <= 23; ++hour) {
    expected.push_back("-" + std::to_string(hour) + ":00");
    expected.push_back("-" + std::to_string(hour) + ":30");
  }
  ASSERT_THAT(expected, SizeIs(95));
  Show([&](frmMirelo& form) {
    EXPECT_EQ(form.ComDisplayOffset.Items(), expected);
    EXPECT_EQ(form.ComDisplayOffset.List(0), "23:30");
    EXPECT_EQ(form.ComDisplayOffset.List(28), "9:30");
    EXPECT_EQ(form.ComDisplayOffset.List(47), "0:00");
    EXPECT_EQ(form.ComDisplayOffset.List(94), "-23:30");
  });
}

TEST_F(Filling, OffersTheFourStylesForTableAndCharts) {
  Show([](frmMirelo& form) {
    EXPECT_THAT(form.ComStyle.Items(), ElementsAre("Blue", "Green", "Yellow", "None"));
    EXPECT_THAT(form.ComChartStyle.Items(), ElementsAre("Blue", "Green", "Yellow", "None"));
  });
}

TEST_F(Filling, ShowsTextsThatAreNoEntriesOfTheirLists) {
  Save("DisplayTimezone", "(ET+5) Somewhere");
  Save("DisplayOffset", "0:15");
  Save("Style", "Red");
  Show([](frmMirelo& form) {
    EXPECT_EQ(form.ComDisplayTimezone.Text(), "(ET+5) Somewhere");
    EXPECT_EQ(form.ComDisplayTimezone.ListIndex(), -1);
    EXPECT_EQ(form.ComDisplayTimezone.ListCount(), 17);
    EXPECT_EQ(form.ComDisplayOffset.Text(), "0:15");
    EXPECT_EQ(form.ComStyle.Text(), "Red");
    EXPECT_EQ(form.chkStyleOrNot.Value(), 1);
  });
}

TEST_F(Filling, ShowsNoSecondsWithoutUpdates) {
  Save("UpdateEvery", 0);
  Save("Seconds", "15");
  ExpectShown(
      {{"chkUpdOrNot", "0"}, {"txtSec", "0", false}, {"VScrollSec", "0", false}, {"ButUpDate", "UpDate"}});
}

TEST_F(Filling, OffersTheQuoteSourcesWhenQuotesAreStreamed) {
  Save("Seconds", "0");
  Show([](frmMirelo& form) {
    EXPECT_TRUE(form.ComQuoteSource.Enabled());
    EXPECT_TRUE(form.ButUpDate.Enabled());
    EXPECT_GT(form.ComQuoteSource.ListCount(), 0);
    EXPECT_TRUE(form.txtSec.Enabled());
  });
}

TEST_F(Filling, SwitchesTheQuoteSourcesOffWhenThereAreSeconds) {
  Show([](frmMirelo& form) { EXPECT_FALSE(form.ComQuoteSource.Enabled()); });
}

TEST_F(Filling, TakesALimitOfZeroForNone) {
  for (const char* limit : {"0", "0.0", "-0"}) {
    SCOPED_TRACE(limit);
    Save("RowsLimit", limit);
    Show([](frmMirelo& form) {
      EXPECT_EQ(form.chkLimitRows.Value(), 0);
      EXPECT_EQ(form.VScrollRows.Value(), 0);
    });
  }
}

TEST_F(Filling, SwitchesTheLimitOffWithoutVerticalTables) {
  Save("VerticalTable", 0);
  ExpectShown({{"chkLimitRows", "1", false}, {"txtRows", "20", false}, {"VScrollRows", "20", false}});
}

TEST_F(Filling, TakesTheStyleNoneForAnUntickedBox) {
  Save("Style", "None");
  Save("ChartStyle", "None");
  ExpectShown({{"chkStyleOrNot", "0"},
               {"ComStyle", "None"},
               {"chkChartStyle", "0", false},
               {"ComChartStyle", "None", false}});
}

TEST_F(Filling, SwitchesTheChartStyleOffWithTheStyleNone) {
  Save("BuildCharts", 1);
  Save("ChartStyle", "None");
  ExpectShown({{"chkChartStyle", "0"}, {"ComChartStyle", "None", false}, {"txtChartPoints", "20"}});
}

TEST_F(Filling, ShowsEmptyListsForEmptySettings) {
  Save("ListLeft", "");
  Save("ListRight", "");
  Show([](frmMirelo& form) {
    EXPECT_THAT(form.ListLeft.Items(), IsEmpty());
    EXPECT_THAT(form.ListRight.Items(), IsEmpty());
  });
}

TEST_F(Filling, StartsOnTheFirstTabWithoutASelection) {
  Show([](frmMirelo& form) {
    EXPECT_EQ(form.C1TTickersSettings.CurrTab(), 0);
    EXPECT_EQ(form.ListLeft.ListIndex(), -1);
    EXPECT_EQ(form.ListRight.ListIndex(), -1);
  });
}

TEST_F(Filling, ArmsTheVerticalBoxOnlyOnceItIsSet) {
  Save("VerticalTable", 0);
  Show([](frmMirelo& form) {
    EXPECT_TRUE(form.VerticalClickArmed());
    Save("VerticalTable", 1);
    form.FG.ColWidth(0, 2345);
    form.Activate();
    EXPECT_EQ(form.chkVerTable.Value(), 1);
    EXPECT_TRUE(form.VerticalClickArmed());
  });
  EXPECT_TRUE(StoredWidth("Ticker").IsEmpty()) << "a click stores the widths";
}

// Sizes that the grid goes through while the dialog is filled.
TEST_F(Filling, GivesTheGridItsStartShapeAndForgetsTheTickers) {
  Show([](frmMirelo& form) {
    form.txtTicker.UserEdit("MSFT");
    form.ButAdd.UserPress();
    EXPECT_EQ(form.FG.Rows(), 2);
    std::vector<std::pair<std::int32_t, std::int32_t>> sizes;
    form.FG.Appearance.Subscribe([&] { sizes.emplace_back(form.FG.Cols(), form.FG.Rows()); });
    form.Activate();
    EXPECT_THAT(sizes, ::testing::Contains(std::make_pair(20, 1)));
    EXPECT_EQ(form.FG.Rows(), 1);
  });
}

TEST_F(Filling, PutsTheTickersWhereTheModeHasThem) {
  for (const int vertical : {0, 1}) {
    SCOPED_TRACE(vertical);
    Save("VerticalTable", vertical);
    Show([&](frmMirelo& form) {
      EXPECT_EQ(form.FG.FixedCols(), vertical);
      EXPECT_EQ(form.FG.Editable(), vertical);
      form.txtTicker.UserEdit("MSFT");
      form.ButAdd.UserPress();
      EXPECT_EQ(form.FG.TextMatrix(1, vertical), "MSFT");
    });
  }
}

TEST_F(Filling, HeadsTheGridWithTheShownColumnsThatAVerticalTableCanHave) {
  const struct {
    const char* shown;
    int charts;
    std::vector<std::string> headers;
  } cases[] = {
      {"Ticker,Last,Change,Bid,Ask,Date,Time",
       0,
       {"", "Ticker", "Last", "Change", "Bid", "Ask", "Date", "Time"}},
      {"Ticker,Tick,Last,52w High", 0, {"", "Ticker", "Last"}},
      {"Ticker,Last", 1, {"", "Ticker", "Last", "Charts (Last & Volume)"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.shown);
    Save("ListRight", c.shown);
    Save("BuildCharts", c.charts);
    Show([&](frmMirelo& form) {
      std::vector<std::string> headers;
      for (std::int32_t col = 0; col < form.FG.Cols(); ++col) headers.push_back(form.FG.TextMatrix(0, col));
      EXPECT_EQ(headers, c.headers);
      EXPECT_EQ(form.FG.Rows(), 1);
    });
  }
}

TEST_F(Filling, ShowsTheFillColoursOnTheirSwatches) {
  const struct {
    Variant on;
    Variant off;
    forms::Color shown_on;
    forms::Color shown_off;
  } cases[] = {{Variant(), Variant(), 32768, 255},
               {"16711680", "65535", 16711680, 65535},
               {0, 128, 0, 128},
               {"-4142", -4142, forms::kWindowBackground, forms::kWindowBackground}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.on.ToText());
    if (!c.on.IsEmpty()) Save("FillColorON", c.on);
    if (!c.off.IsEmpty()) Save("FillColorOFF", c.off);
    Show([&](frmMirelo& form) {
      EXPECT_EQ(form.txtOn.BackColor(), c.shown_on);
      EXPECT_EQ(form.txtOff.BackColor(), c.shown_off);
    });
  }
}

// The table on the sheet knows better than the settings.
TEST_F(Filling, TakesColumnsTickersAndPaceFromTheQuoteTable) {
  const auto workbook = facade->m_ObjExcelApplication()->ActiveWorkbook();
  const auto table = workbook->Worksheets()->Item(1);
  table->Name("Dovanta2_Quotes");
  const struct {
    const char* address;
    const char* value;
  } cells[] = {{"A1", "SnapShot( 15 sec)"},
               {"A2", "Ticker"},
               {"B2", "Bid"},
               {"C2", "Tick"},
               {"A3", "MSFT"},
               {"A4", "IBM"}};
  for (const auto& cell : cells) table->Range(cell.address)->Value(cell.value);
  for (const int vertical : {0, 1}) {
    SCOPED_TRACE(vertical);
    Save("VerticalTable", vertical);
    Show([&](frmMirelo& form) {
      EXPECT_THAT(form.ListRight.Items(), ElementsAre("Ticker", "Bid", "Tick"));
      EXPECT_EQ(form.ListLeft.ListCount(), 16);
      EXPECT_EQ(form.txtSec.Text(), "15");
      ASSERT_EQ(form.FG.Rows(), 3);
      EXPECT_EQ(form.FG.TextMatrix(1, vertical), "MSFT");
      EXPECT_EQ(form.FG.TextMatrix(2, vertical), "IBM");
      form.Activate();
      EXPECT_EQ(form.FG.Rows(), 3) << "tickers are read anew, not added";
    });
  }
}

// The box is still off at that moment and cannot take the focus, which is reported.
TEST_F(Filling, AsksForANumberWhereASettingHoldsNone) {
  Save("RowsLimit", "many");
  Answers({"IGNORE"});
  ExpectShown({{"txtRows", "many"}, {"chkLimitRows", "0"}, {"VScrollRows", "0"}, {"txtHTTPPort", "16239"}});
  EXPECT_THAT(desktop.boxes, ElementsAre(ScriptedDesktop::Box{"The value must be a digit.", 16, "Dovanta2"}));
  EXPECT_THAT(ReportedErrors(), ElementsAre(5));
}

}  // namespace
}  // namespace mirelo::testing
