#include <algorithm>
#include <ostream>
#include <string_view>

#include "core/settings_table.h"
#include "dialog/control_facts.h"
#include "dialog/dialog_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kChartHeader = "Charts (Last & Volume)";

// Boxes that a person ticks, and what they switch.
class Options : public DialogTest {
 protected:
  // The names of those of the controls that are enabled.
  static std::vector<std::string> EnabledOf(const frmMirelo& form, std::vector<std::string> names) {
    std::erase_if(names, [&](const std::string& name) { return !form.Find(name)->Enabled(); });
    return names;
  }
  static std::vector<std::string> Headers(const frmMirelo& form) {
    std::vector<std::string> headers;
    for (std::int32_t col = 0; col < form.FG.Cols(); ++col) headers.push_back(form.FG.TextMatrix(0, col));
    return headers;
  }
  // Opens the dialog on a tab. Every routine that is entered there is left again.
  void ShowTab(std::int32_t tab, std::function<void(frmMirelo&)> acts) {
    Show([tab, acts = std::move(acts)](frmMirelo& form) {
      form.C1TTickersSettings.UserSelect(tab);
      acts(form);
    });
  }
};

// Tabs

TEST_F(Options, TheFieldsTabSelectsTheLastAvailableColumn) {
  ShowTab(kTickers, [](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kFields);
    EXPECT_TRUE(form.ListLeft.HasFocus());
    EXPECT_EQ(form.ListLeft.ListIndex(), form.ListLeft.ListCount() - 1);
    EXPECT_TRUE(form.ButRight.Enabled());
    EXPECT_TRUE(form.ButAllRight.Enabled());
  });
}

TEST_F(Options, TheFieldsTabKeepsASelectedColumn) {
  ShowTab(kFields, [](frmMirelo& form) {
    form.ListLeft.UserSelect(2);
    form.C1TTickersSettings.UserSelect(kTickers);
    form.C1TTickersSettings.UserSelect(kFields);
    EXPECT_EQ(form.ListLeft.ListIndex(), 2);
  });
}

// Moving on to the list of shown columns is what the up and down buttons' routine does.
TEST_F(Options, TheFieldsTabDecidesOnUpAndDown) {
  Save("ListLeft", "");
  ShowTab(kFields, [](frmMirelo& form) {
    EXPECT_TRUE(form.ListLeft.HasFocus());
    EXPECT_EQ(form.ListLeft.ListIndex(), -1);
    form.ListRight.UserSelect(1);
    form.ButDown.Enabled(false);
    form.C1TTickersSettings.UserSelect(kTickers);
    form.C1TTickersSettings.UserSelect(kFields);
    EXPECT_TRUE(form.ListRight.HasFocus());
    EXPECT_TRUE(form.ButDown.Enabled());
  });
}

TEST_F(Options, TheSettingsTabEmptiesTheStatusLine) {
  for (const std::int32_t tab : {kTickers, kSettings, kCharting, kFields}) {
    SCOPED_TRACE(tab);
    ShowTab(tab == kTickers ? kCharting : kTickers, [&](frmMirelo& form) {
      form.lblStatus.Caption("Connecting to host...");
      form.C1TTickersSettings.UserSelect(tab);
      EXPECT_EQ(form.lblStatus.Caption(), tab == kSettings ? "" : "Connecting to host...");
    });
  }
}

TEST_F(Options, OtherTabsLeaveTheFocus) {
  for (const std::int32_t tab : {kSettings, kCharting}) {
    SCOPED_TRACE(tab);
    ShowTab(kTickers, [&](frmMirelo& form) {
      form.txtTicker.UserEdit("MSFT");
      form.C1TTickersSettings.UserSelect(tab);
      EXPECT_TRUE(form.txtTicker.HasFocus());
      EXPECT_EQ(form.ListLeft.ListIndex(), -1);
    });
  }
}

// Charts

const std::vector<std::string> kChartControls{"chkChartStyle",      "ComChartStyle",  "txtChartPoints",
                                              "VScrollChartPoints", "chkColorPoints", "chkGreyOut",
                                              "chkAddYAxis"};

TEST_F(Options, BuildingChartsSwitchesTheirControls) {
  ShowTab(kCharting, [](frmMirelo& form) {
    EXPECT_THAT(EnabledOf(form, kChartControls), IsEmpty());
    form.chkBuildCharts.UserClick();
    EXPECT_EQ(EnabledOf(form, kChartControls), kChartControls);
    form.chkBuildCharts.UserClick();
    EXPECT_THAT(EnabledOf(form, kChartControls), IsEmpty());
  });
}

TEST_F(Options, BuildingChartsLeavesTheStyleNoneOff) {
  Save("ChartStyle", "None");
  ShowTab(kCharting, [](frmMirelo& form) {
    form.chkBuildCharts.UserClick();
    EXPECT_THAT(EnabledOf(form, kChartControls),
                ElementsAre("chkChartStyle", "txtChartPoints", "VScrollChartPoints", "chkColorPoints",
                            "chkGreyOut", "chkAddYAxis"));
  });
}

TEST_F(Options, BuildingChartsAddsTheirColumnToVerticalTables) {
  ShowTab(kCharting, [](frmMirelo& form) {
    const auto fields = Headers(form);
    form.chkBuildCharts.UserClick();
    EXPECT_EQ(Headers(form).size(), fields.size() + 1);
    EXPECT_EQ(Headers(form).back(), kChartHeader);
    form.chkBuildCharts.UserClick();
    EXPECT_EQ(Headers(form), fields);
  });
}

TEST_F(Options, BuildingChartsTakesTheirColumnFromAGridWithoutVerticalTables) {
  Save("VerticalTable", 0);
  ShowTab(kCharting, [](frmMirelo& form) {
    form.FG.FormatString("Ticker|Last|" + std::string(kChartHeader));
    form.chkBuildCharts.UserClick();
    EXPECT_THAT(Headers(form), ElementsAre("Ticker", "Last"));
  });
}

TEST_F(Options, BuildingNoChartsLeavesAGridWithoutVerticalTables) {
  Save("VerticalTable", 0);
  Save("BuildCharts", 1);
  ShowTab(kCharting, [](frmMirelo& form) {
    form.FG.FormatString("Ticker|Last|" + std::string(kChartHeader));
    form.chkBuildCharts.UserClick();
    EXPECT_THAT(Headers(form), ElementsAre("Ticker", "Last", kChartHeader));
  });
}

// Styles

// A box that chooses between a style and none, and the list of styles beside it.
struct StyleBox {
  const char* name;
  const char* setting;
  std::int32_t tab;
  forms::CheckBox frmMirelo::*box;
  forms::ComboBox frmMirelo::*styles;
  // The controls that the box switches, and those of them that are on without a style.
  std::vector<std::string> controls;
  std::vector<std::string> on_without_style;
};
void PrintTo(const StyleBox& style, std::ostream* out) { *out << style.name; }

class StyleOptions : public Options, public ::testing::WithParamInterface<StyleBox> {
 public:
  static std::vector<StyleBox> Boxes() {
    return {{"OfTheTable",
             "Style",
             kSettings,
             &frmMirelo::chkStyleOrNot,
             &frmMirelo::ComStyle,
             {"chkStyleOrNot", "ComStyle"},
             {"chkStyleOrNot"}},
            {"OfCharts",
             "ChartStyle",
             kCharting,
             &frmMirelo::chkChartStyle,
             &frmMirelo::ComChartStyle,
             kChartControls,
             {"chkChartStyle", "chkColorPoints", "chkGreyOut", "chkAddYAxis"}}};
  }

 protected:
  StyleOptions() { Save("BuildCharts", 1); }

  // Whatever the box was, the person unticks it first.
  void ShowUnticked(
      const std::function<void(frmMirelo& form, forms::CheckBox& box, forms::ComboBox& styles)>& acts) {
    ShowTab(GetParam().tab, [&](frmMirelo& form) {
      forms::CheckBox& box = form.*GetParam().box;
      if (box.Value() == 1) box.UserClick();
      acts(form, box, form.*GetParam().styles);
    });
  }
};

TEST_P(StyleOptions, AreNoneWhenTheyAreUnticked) {
  ShowUnticked([](frmMirelo& form, forms::CheckBox&, forms::ComboBox& styles) {
    EXPECT_EQ(styles.Text(), "None");
    EXPECT_EQ(EnabledOf(form, GetParam().controls), GetParam().on_without_style);
  });
}

TEST_P(StyleOptions, AreTheStoredOnesWhenTheyAreTicked) {
  const struct {
    const char* stored;
    const char* shown;
  } cases[] = {{nullptr, "Blue"}, {"Green", "Green"}, {"None", "None"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.shown);
    if (c.stored != nullptr) Save(GetParam().setting, c.stored);
    ShowUnticked([&](frmMirelo& form, forms::CheckBox& box, forms::ComboBox& styles) {
      box.UserClick();
      EXPECT_EQ(styles.Text(), c.shown);
      EXPECT_EQ(EnabledOf(form, GetParam().controls), GetParam().controls);
    });
  }
}

TEST_P(StyleOptions, KeepAStyleThatIsNotNoneWhenTheyAreTicked) {
  ShowUnticked([](frmMirelo&, forms::CheckBox& box, forms::ComboBox& styles) {
    styles.Text("Yellow");
    box.UserClick();
    EXPECT_EQ(styles.Text(), "Yellow");
  });
}

INSTANTIATE_TEST_SUITE_P(All, StyleOptions, ::testing::ValuesIn(StyleOptions::Boxes()),
                         [](const auto& test) { return test.param.name; });

// Limits

TEST_F(Options, AnUntickedLimitOfRowsIsZero) {
  ShowTab(kTickers, [](frmMirelo& form) {
    form.chkLimitRows.UserClick();
    EXPECT_EQ(form.txtRows.Text(), "0");
    EXPECT_EQ(form.VScrollRows.Value(), 0);
    EXPECT_THAT(EnabledOf(form, {"chkLimitRows", "txtRows", "VScrollRows"}), ElementsAre("chkLimitRows"));
    form.chkLimitRows.UserClick();
    EXPECT_EQ(form.txtRows.Text(), "0");
    EXPECT_THAT(EnabledOf(form, {"txtRows", "VScrollRows"}), ElementsAre("txtRows", "VScrollRows"));
  });
}

TEST_F(Options, WithoutUpdatesThereAreNoSeconds) {
  ShowTab(kSettings, [](frmMirelo& form) {
    form.chkUpdOrNot.UserClick();
    EXPECT_EQ(form.txtSec.Text(), "0");
    EXPECT_THAT(EnabledOf(form, {"txtSec", "VScrollSec"}), IsEmpty());
    form.chkUpdOrNot.UserClick();
    EXPECT_EQ(form.txtSec.Text(), "0");
    EXPECT_THAT(EnabledOf(form, {"txtSec", "VScrollSec"}), ElementsAre("txtSec", "VScrollSec"));
  });
}

// A value that the one took and the other refused could be stored and never be shown, or the other way round.
TEST_F(Options, ScrollBarsReachAsFarAsTheCatalogueOfSettingsAllows) {
  ShowTab(kSettings, [](frmMirelo& form) {
    const auto expect = [](const forms::ScrollBar& bar, std::string_view key) {
      const auto row = std::ranges::find(catalogue::kRows, key, &Setting::key);
      ASSERT_NE(row, catalogue::kRows.end()) << key;
      EXPECT_EQ(std::min(bar.Min(), bar.Max()), row->least) << key;
      EXPECT_EQ(std::max(bar.Min(), bar.Max()), row->greatest) << key;
    };
    expect(form.VScrollRows, "RowsLimit");
    expect(form.VScrollSec, "Seconds");
    expect(form.VScrollDecimalplaces, "txtDecimalPlaces");
  });
}

// The vertical box

TEST_F(Options, TheVerticalBoxLaysTheGridOutAndKeepsTheTickers) {
  ShowTab(kTickers, [](frmMirelo& form) {
    form.txtTicker.UserEdit("MSFT");
    form.ButAdd.UserPress();
    form.chkVerTable.UserClick();
    EXPECT_THAT(Headers(form), ElementsAre("Ticker"));
    EXPECT_EQ(form.FG.TextMatrix(1, 0), "MSFT");
    EXPECT_THAT(EnabledOf(form, {"chkLimitRows", "txtRows", "VScrollRows"}), IsEmpty());
    form.chkVerTable.UserClick();
    EXPECT_EQ(form.FG.FixedCols(), 1);
    EXPECT_EQ(form.FG.TextMatrix(1, 0), "");
    EXPECT_EQ(form.FG.TextMatrix(1, 1), "MSFT");
    EXPECT_THAT(EnabledOf(form, {"chkLimitRows", "txtRows", "VScrollRows"}),
                ElementsAre("chkLimitRows", "txtRows", "VScrollRows"));
    form.txtTicker.UserEdit("IBM");
    form.ButAdd.UserPress();
    EXPECT_EQ(form.FG.TextMatrix(2, 1), "IBM");
  });
}

TEST_F(Options, TheVerticalBoxStoresTheWidthsOfTheColumnsThatGo) {
  Save("VerticalTable", 0);
  ShowTab(kTickers, [](frmMirelo& form) {
    form.FG.UserResizeColumn(0, 2345);
    form.chkVerTable.UserClick();
    EXPECT_EQ(StoredWidth("Ticker").ToInt32(), 2345);
    form.chkVerTable.UserClick();
    EXPECT_EQ(form.FG.ColWidth(0), 2345);
  });
}

TEST_F(Options, TheVerticalBoxDoesNothingUntilItIsArmed) {
  ShowTab(kTickers, [](frmMirelo& form) {
    form.VerticalClickArmed(false);
    const auto headers = Headers(form);
    form.chkVerTable.UserClick();
    EXPECT_EQ(form.chkVerTable.Value(), 0);
    EXPECT_EQ(Headers(form), headers);
    EXPECT_TRUE(form.chkLimitRows.Enabled());
    EXPECT_TRUE(StoredWidth("Ticker").IsEmpty());
  });
}

// The store fails while the stored style is read. The report brings the dialog to the front again, which
// leaves one name on the call stack because it is not filled anew.
class OptionsWithAFailingStore : public Options {
 protected:
  void TickStyle(const std::function<void(frmMirelo&)>& look) {
    Show([&](frmMirelo& form) {
      form.ReloadOnActivate(false);
      form.C1TTickersSettings.UserSelect(kSettings);
      form.chkStyleOrNot.UserClick();
      Damage("Style");
      Mend([] { Save("Style", "Green"); });
      form.chkStyleOrNot.UserClick();
      look(form);
    });
    EXPECT_THAT(ReportedErrors(), ElementsAre(ErrorNumber(0x80044284)));
    EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tin Mirelo.frmMirelo.chkStyleOrNot_Click at line 0"));
  }
};

TEST_F(OptionsWithAFailingStore, ReadTheStyleAgainOnRetry) {
  Answers({"RETRY"});
  TickStyle([](frmMirelo& form) {
    EXPECT_EQ(form.ComStyle.Text(), "Green");
    EXPECT_TRUE(form.ComStyle.Enabled());
  });
}

TEST_F(OptionsWithAFailingStore, KeepTheStyleNoneWhenThatIsIgnored) {
  Answers({"IGNORE"});
  TickStyle([](frmMirelo& form) {
    EXPECT_EQ(form.ComStyle.Text(), "None");
    EXPECT_TRUE(form.ComStyle.Enabled());
    EXPECT_THAT(CallStack(),
                ElementsAre("Mirelo.cMirelo.LoadFrmMirelo", "Mirelo.frmMirelo.chkStyleOrNot_Click"));
  });
}

TEST_F(OptionsWithAFailingStore, KeepTheStyleNoneWhenThatIsAborted) {
  Answers({"ABORT"});
  TickStyle([](frmMirelo& form) {
    EXPECT_EQ(form.ComStyle.Text(), "None");
    EXPECT_THAT(CallStack(), IsEmpty());
  });
}

TEST_F(OptionsWithAFailingStore, GoOnWithTheGridWhenTheWidthsAreNotStored) {
  Save("VerticalTable", 0);
  Answers({"IGNORE"});
  Show([&](frmMirelo& form) {
    form.ReloadOnActivate(false);
    registry.Fail("RegCreateKeyExA");
    form.chkVerTable.UserClick();
    EXPECT_EQ(form.FG.FixedCols(), 1);
    EXPECT_TRUE(form.chkLimitRows.Enabled());
  });
  EXPECT_THAT(ReportedErrors(), ElementsAre(ErrorNumber(0x80044281)));
  EXPECT_TRUE(StoredWidth("Ticker").IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
