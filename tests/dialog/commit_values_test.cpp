#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "core/settings_catalogue.h"
#include "dialog/commit_test.h"
#include "worksheet/color_schemes.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

// All names that a commit writes, in their order, while quotes are streamed.
const std::vector<std::string> kNames{
    "Seconds",       "Style",           "VerticalTable",    "RowsLimit",        "BuildCharts",
    "ChartStyle",    "ChartPoints",     "txtDecimalPlaces", "txtVerticalSheet", "ColorPoints",
    "GreyOut",       "AddYAxis",        "HTTPPort",         "SocketPort",       "Webaddress",
    "UpdateEvery",   "DisplayTimezone", "DisplayOffset",    "DisplacementHour", "DisplacementMinute",
    "ComQuoteSource"};

class Committing : public CommitTest {};

TEST_F(Committing, WritesTheDefaultsInTheirOrderAndKinds) {
  Save("VerticalTable", 0);
  EXPECT_EQ(Go(), 78);
  EXPECT_THAT(
      Written(),
      ElementsAre(Write{"Settings\\WidthField", "Ticker", host::Registry::kDword, "1700"},
                  Text("Seconds", "60"), Text("Style", "Blue"), Number("VerticalTable", "0"),
                  Text("RowsLimit", "20"), Number("BuildCharts", "0"), Text("ChartStyle", "Blue"),
                  Text("ChartPoints", "20"), Number("txtDecimalPlaces", "2"),
                  Text("txtVerticalSheet", "Quotes_Vertical"), Number("ColorPoints", "1"),
                  Number("GreyOut", "1"), Number("AddYAxis", "0"), Text("HTTPPort", "16239"),
                  Text("SocketPort", "16240"), Text("Webaddress", "127.0.0.1"), Number("UpdateEvery", "1"),
                  Text("DisplayTimezone", "(ET) US Eastern"), Text("DisplayOffset", "0:00"),
                  Number("DisplacementHour", "0"), Number("DisplacementMinute", "0")));
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_THAT(CallStack(), IsEmpty());
}

TEST_F(Committing, WritesSettingsOfTheCatalogueOnlyEachInItsKind) {
  EXPECT_EQ(Go(), 78);
  EXPECT_THAT(log.writes, SizeIs(::testing::Gt(20U)));
  for (const Write& write : log.writes) {
    SCOPED_TRACE(write.section + "\\" + write.name);
    const Setting* setting = FindSetting(write.section, write.name);
    ASSERT_NE(setting, nullptr);
    EXPECT_EQ(write.type, setting->kind == SettingKind::Text ? host::Registry::kSz : host::Registry::kDword);
  }
}

TEST_F(Committing, WritesWhatThePersonHasChosen) {
  Save("VerticalTable", 0);
  const auto acts = [](frmMirelo& form) {
    form.FG.UserResizeColumn(0, 2345);
    OnSettings([](frmMirelo& form) {
      form.txtSec.UserEdit("0");
      form.ComQuoteSource.UserEdit(" IQFeed US - STREAMING RealTime (Subscription)");
      form.ComStyle.UserEdit("Yellow");
      form.txtDecimalPlaces.UserEdit("4");
      form.txtVerticalSheet.UserEdit("My Sheet");
      form.txtHTTPPort.UserEdit("-25536");
      form.txtSocketPort.UserEdit("16999");
      form.txtWebAddress.UserEdit("192.0.2.7");
      form.ComDisplayTimezone.UserEdit("(ET+13) Japan/Korea");
      form.ComDisplayOffset.UserEdit("1:30");
    })(form);
    OnCharting([](frmMirelo& form) {
      form.ComChartStyle.UserEdit("Green");
      form.txtChartPoints.UserEdit("50");
      form.chkColorPoints.UserClick();
      form.chkGreyOut.UserClick();
      form.chkAddYAxis.UserClick();
    })(form);
  };
  EXPECT_EQ(Go(acts), 77);
  EXPECT_THAT(
      Written(),
      ElementsAre(Write{"Settings\\WidthField", "Ticker", host::Registry::kDword, "2345"},
                  Text("Seconds", "0"), Text("Style", "Yellow"), Number("VerticalTable", "0"),
                  Text("RowsLimit", "20"), Number("BuildCharts", "1"), Text("ChartStyle", "Green"),
                  Text("ChartPoints", "50"), Number("txtDecimalPlaces", "4"),
                  Text("txtVerticalSheet", "My Sheet"), Number("ColorPoints", "0"), Number("GreyOut", "0"),
                  Number("AddYAxis", "1"), Text("HTTPPort", "-25536"), Text("SocketPort", "16999"),
                  Text("Webaddress", "192.0.2.7"), Number("UpdateEvery", "1"),
                  Text("DisplayTimezone", "(ET+13) Japan/Korea"), Text("DisplayOffset", "1:30"),
                  Number("DisplacementHour", "14"), Number("DisplacementMinute", "30"),
                  Write{"Settings\\QuoteSource\\First", "ComQuoteSource", host::Registry::kSz,
                        " IQFeed US - STREAMING RealTime (Subscription)"}));
  EXPECT_EQ(internet.requests[0].host, "192.0.2.7");
  EXPECT_EQ(internet.requests[0].port, 40000);
}

TEST_F(Committing, WritesTicksAndTheRowsOfVerticalTables) {
  Go([](frmMirelo& form) {
    form.txtRows.UserEdit("300");
    OnSettings([](frmMirelo& form) { form.chkUpdOrNot.UserClick(); })(form);
  });
  EXPECT_THAT(log.writes, Contains(Number("VerticalTable", "1")));
  EXPECT_THAT(log.writes, Contains(Text("RowsLimit", "300")));
  EXPECT_THAT(log.writes, Contains(Number("UpdateEvery", "0")));
  EXPECT_THAT(log.writes, Contains(Text("Seconds", "0")));
}

// The width of a column without a caption, as the first one of vertical tables is, would have no name.
TEST_F(Committing, StoresTheWidthsOfColumnsWithACaption) {
  std::vector<std::string> captions;
  std::vector<std::string> widths;
  Go([&](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kFields);
    form.ButAllRight.UserPress();
    form.C1TTickersSettings.UserSelect(kTickers);
    ASSERT_EQ(form.FG.TextMatrix(0, 0), "");
    form.FG.UserResizeColumn(0, 111);
    for (std::int32_t col = 1; col < form.FG.Cols(); ++col) {
      form.FG.UserResizeColumn(col, 500 + col);
      captions.push_back(form.FG.TextMatrix(0, col));
      widths.push_back(std::to_string(500 + col));
    }
  });
  ASSERT_GT(captions.size(), 2U);
  std::vector<Write> expected;
  for (std::size_t i = 0; i < captions.size(); ++i) {
    expected.push_back({"Settings\\WidthField", captions[i], host::Registry::kDword, widths[i]});
  }
  EXPECT_EQ(std::vector<Write>(log.writes.begin(), log.writes.begin() + static_cast<long>(captions.size())),
            expected);
}

TEST_F(Committing, TellsTheMacrosWhetherToStream) {
  struct Case {
    bool updates;
    const char* seconds;
    std::int32_t result;
    Write stored;
  };
  for (const Case& c :
       {Case{true, "0", 77, Text("Seconds", "0")}, Case{false, "0", 78, Text("Seconds", "0")},
        Case{true, "15", 78, Text("Seconds", "15")}, Case{true, "letters", 77, Number("Seconds", "60")},
        Case{true, "", 77, Number("Seconds", "60")}, Case{true, "0.25", 78, Text("Seconds", "0.25")},
        Case{true, "-40000", 78, Number("Seconds", "60")}}) {
    SCOPED_TRACE(c.seconds);
    EXPECT_EQ(Go(OnSettings([&](frmMirelo& form) {
                if (c.updates) {
                  form.txtSec.UserEdit(c.seconds);
                } else {
                  form.chkUpdOrNot.UserClick();
                }
              })),
              c.result);
    EXPECT_THAT(log.writes, Contains(c.stored));
    Save("UpdateEvery", 1);
    Save("Seconds", "60");
  }
}

TEST_F(Committing, PutsTwentyInPlaceOfARowsLimitBelowZeroOrWithoutNumber) {
  struct Case {
    const char* rows;
    Write stored;
  };
  for (const Case& c : {Case{"-3", Number("RowsLimit", "20")}, Case{"-40000", Number("RowsLimit", "20")},
                        Case{"rows", Number("RowsLimit", "20")}, Case{"", Number("RowsLimit", "20")},
                        Case{"0", Text("RowsLimit", "0")}, Case{"40000", Text("RowsLimit", "40000")},
                        Case{" 7 ", Text("RowsLimit", " 7 ")}}) {
    SCOPED_TRACE(c.rows);
    Go([&](frmMirelo& form) { Hold(form.txtRows, c.rows); });
    EXPECT_THAT(log.writes, Contains(c.stored));
    Save("RowsLimit", "20");
  }
}

// Of "5-", with its sign behind, the start is 5 and the whole -5.
TEST_F(Committing, JudgesSecondsByTheStartOfTheTextAndRowsByTheWhole) {
  Go([&](frmMirelo& form) {
    Hold(form.txtSec, "5-");
    Hold(form.txtRows, "5-");
  });
  EXPECT_THAT(log.writes, Contains(Text("Seconds", "5-")));
  EXPECT_THAT(log.writes, Contains(Number("RowsLimit", "20")));
}

TEST_F(Committing, RoundsDecimalPlaces) {
  for (const auto& [text, stored] : {std::pair{"2.5", "2"}, {"3.5", "4"}, {"0", "0"}}) {
    SCOPED_TRACE(text);
    Go(OnSettings([text = text](frmMirelo& form) { form.txtDecimalPlaces.UserEdit(text); }));
    EXPECT_THAT(log.writes, Contains(Number("txtDecimalPlaces", stored)));
  }
}

TEST_F(Committing, LeavesAValueThatCannotBeConvertedUnwrittenAndWritesTheRest) {
  Save("txtDecimalPlaces", 3);
  EXPECT_EQ(Go(OnSettings([](frmMirelo& form) {
              form.txtDecimalPlaces.UserEdit("40000");
              form.txtSec.UserEdit("0");
            })),
            77);
  std::vector<std::string> expected = kNames;
  std::erase(expected, "txtDecimalPlaces");
  EXPECT_EQ(WrittenNames(), expected);
  EXPECT_EQ(Stored("Settings", "txtDecimalPlaces").ToInt32(), 3);
  EXPECT_THAT(desktop.reports, IsEmpty());
}

TEST_F(Committing, SkipsAValueThatCannotBeStoredAndWritesTheRest) {
  Save("VerticalTable", 0);
  Go(OnSettings([](frmMirelo& form) { form.txtSec.UserEdit("0"); }));  // so that each has a value
  for (std::size_t failing = 0; failing < kNames.size(); ++failing) {
    const char* const name = kNames[failing].c_str();
    SCOPED_TRACE(name);
    const char* const section = failing + 1 == kNames.size() ? "Settings\\QuoteSource\\First" : "Settings";
    Variant before = Stored(section, name);
    EXPECT_EQ(Go(OnSettings([&](frmMirelo& form) {
                form.txtSec.UserEdit("0");
                mGlobal::AppSettings().SaveSetting(section, name, "7");
                registry.Fail("RegSetValueExA", static_cast<int>(failing) + 2);  // behind the one width
              })),
              77);
    EXPECT_EQ(Stored(section, name).ToText(), "7") << "it could not be stored";
    EXPECT_EQ(WrittenNames(), kNames);
    EXPECT_THAT(desktop.reports, IsEmpty());
    EXPECT_THAT(CallStack(), IsEmpty());
    mGlobal::AppSettings().SaveSetting(section, name, before);
  }
}

TEST_F(Committing, LeavesTheQuoteSourceAloneWhileItCannotBeChosen) {
  Go([](frmMirelo& form) {
    mGlobal::AppSettings().SaveSetting("Settings\\QuoteSource\\First", "ComQuoteSource", Variant("before"));
    EXPECT_FALSE(form.ComQuoteSource.Enabled());
  });
  EXPECT_THAT(log.writes,
              Not(Contains(Field(&Write::section, ::testing::StartsWith("Settings\\QuoteSource")))));
  EXPECT_EQ(Stored("Settings\\QuoteSource\\First", "ComQuoteSource").ToText(), "before");
}

TEST(ColorsOfStyle, AreThoseOfGreenForEveryOtherText) {
  struct Case {
    std::string_view style;
    std::string_view colors;
  };
  for (const Case& c : {Case{"Green", "2,50,2,35,7"}, Case{"Blue", "2,47,2,24,7"},
                        Case{"Yellow", "2,16,2,36,14"}, Case{"None", "2,50,2,35,7"}, Case{"", "2,50,2,35,7"},
                        Case{"blue", "2,50,2,35,7"}, Case{"Yellow ", "2,50,2,35,7"}}) {
    SCOPED_TRACE(c.style);
    EXPECT_EQ(ColorsOfStyle(c.style), c.colors);
  }
}

}  // namespace
}  // namespace mirelo::testing
