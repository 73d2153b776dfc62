#include <set>

#include "dialog/control_facts.h"
#include "dialog/frmMirelo.h"
#include "support/error_number.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ControlRow {
  const char* name;
  const char* kind;
  const char* parent;  // "" for the form
  const char* text = "";
  const char* tip = "";
};

constexpr ControlRow kControls[] = {
    {"C1Elastic1", "panel", ""},
    {"C1TTickersSettings", "tab", "C1Elastic1", "&Tickers|&Settings|&Charting|&Fields"},
    {"C1ElaFields", "panel", "C1TTickersSettings"},
    {"ButAllLeft", "button", "C1ElaFields"},
    {"ButAllRight", "button", "C1ElaFields"},
    {"ListRight", "list box", "C1ElaFields"},
    {"ListLeft", "list box", "C1ElaFields"},
    {"ButDown", "button", "C1ElaFields", "", "Move Field Down"},
    {"ButUp", "button", "C1ElaFields", "", "Move Fieldr Up"},
    {"ButLeft", "button", "C1ElaFields"},
    {"ButRight", "button", "C1ElaFields"},
    {"lblColumsTo", "label", "C1ElaFields", "Columns to view"},
    {"lblAvailableColums", "label", "C1ElaFields", "Available columns"},
    {"C1ElaCharting", "panel", "C1TTickersSettings"},
    {"chkGreyOut", "check box", "C1ElaCharting", "Use grey-outing"},
    {"chkColorPoints", "check box", "C1ElaCharting", "Color Points"},
    {"chkAddYAxis", "check box", "C1ElaCharting", "Add Y Axis"},
    {"VScrollChartPoints", "scroll bar", "C1ElaCharting", "0"},
    {"txtChartPoints", "text box", "C1ElaCharting"},
    {"ComChartStyle", "combo", "C1ElaCharting"},
    {"chkChartStyle", "check box", "C1ElaCharting", "Chart style:"},
    {"chkBuildCharts", "check box", "C1ElaCharting", "Build charts"},
    {"C1ElaSettings", "panel", "C1TTickersSettings"},
    {"txtVerticalSheet", "text box", "C1ElaSettings"},
    {"VScrollDecimalplaces", "scroll bar", "C1ElaSettings", "0"},
    {"txtDecimalPlaces", "text box", "C1ElaSettings", "", "Choose Decimal places"},
    {"ComDisplayOffset", "combo", "C1ElaSettings"},
    {"ComDisplayTimezone", "combo", "C1ElaSettings"},
    {"ButUpDate", "button", "C1ElaSettings", "UpDate", "Update Quote Source from QT"},
    {"ComQuoteSource", "combo", "C1ElaSettings"},
    {"ButOff", "button", "C1ElaSettings", "Off"},
    {"ButOn", "button", "C1ElaSettings", "On"},
    {"txtOff", "text box", "C1ElaSettings"},
    {"txtOn", "text box", "C1ElaSettings"},
    {"txtWebAddress", "text box", "C1ElaSettings", "127.0.0.1"},
    {"txtSocketPort", "text box", "C1ElaSettings", "16240"},
    {"txtHTTPPort", "text box", "C1ElaSettings", "16239"},
    {"ComStyle", "combo", "C1ElaSettings"},
    {"chkStyleOrNot", "check box", "C1ElaSettings", "Table style"},
    {"VScrollSec", "scroll bar", "C1ElaSettings", "0"},
    {"txtSec", "text box", "C1ElaSettings"},
    {"chkUpdOrNot", "check box", "C1ElaSettings", "Update every"},
    {"lblExampleSheet", "label", "C1ElaSettings", "Quotes_Vertical(Ticker)"},
    {"lblTicker", "label", "C1ElaSettings", "(Ticker)"},
    {"lblExample", "label", "C1ElaSettings", "2.12"},
    {"Line2", "line", "C1ElaSettings"},
    {"Line1", "line", "C1ElaSettings"},
    {"lblTimingOptions", "label", "C1ElaSettings", "Timing Options:"},
    {"lblStatus", "label", "C1ElaSettings"},
    {"lblSeconds", "label", "C1ElaSettings", "seconds."},
    {"C1ElaTickers", "panel", "C1TTickersSettings"},
    {"VScrollRows", "scroll bar", "C1ElaTickers", "0"},
    {"txtRows", "text box", "C1ElaTickers"},
    {"chkLimitRows", "check box", "C1ElaTickers", "Limit number of rows to:"},
    {"chkVerTable", "check box", "C1ElaTickers", "Add vertical quotes table"},
    {"FG", "grid", "C1ElaTickers"},
    {"ButSort", "button", "C1ElaTickers", "Sort Tickers", "Sort Tickers"},
    {"ButExport", "button", "C1ElaTickers", "Export", "Export Tickers to QT"},
    {"ButImport", "button", "C1ElaTickers", "Import", "Import Tickers Ftom QT"},
    {"ButDel", "button", "C1ElaTickers", "", "Delete Ticker"},
    {"ButTickerDown", "button", "C1ElaTickers", "", "Move Ticker Down"},
    {"ButTickerUp", "button", "C1ElaTickers", "", "Move Ticker Up"},
    {"ButAdd", "button", "C1ElaTickers", "Add", "Add Ticker"},
    {"txtTicker", "text box", "C1ElaTickers"},
    {"ImageChart", "image", "C1ElaTickers"},
    {"ButCancel", "button", "C1Elastic1", "Cancel"},
    {"ButClose", "button", "C1Elastic1", "Close"},
    {"ButGo", "button", "C1Elastic1", "Go"},
};

class Controls : public ::testing::Test {
 protected:
  frmMirelo form;
};

TEST_F(Controls, StandInADialogOfItsOwnNameAndSize) {
  EXPECT_EQ(form.Name(), "frmMirelo");
  EXPECT_EQ(form.Caption(), "Dovanta");
  EXPECT_EQ(form.Width(), 6330);
  EXPECT_EQ(form.Height(), 7530);
  EXPECT_EQ(form.Tag(), "");
}

TEST_F(Controls, AreOfTheirKindAtTheirPlaceWithTheirTexts) {
  for (const ControlRow& row : kControls) {
    SCOPED_TRACE(row.name);
    forms::Control* const control = form.Find(row.name);
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(ControlFacts(*control).kind, row.kind);
    EXPECT_EQ(control->Parent() == nullptr ? "" : control->Parent()->Name(), row.parent);
    EXPECT_EQ(ControlFacts(*control).text, row.text);
    EXPECT_EQ(control->ToolTipText(), row.tip);
    EXPECT_TRUE(control->Enabled());
  }
}

TEST_F(Controls, AreAllKnownHere) {
  std::set<std::string> known;
  for (const ControlRow& row : kControls) known.insert(row.name);
  for (const forms::Control* control : form.Controls())
    EXPECT_TRUE(known.count(control->Name())) << control->Name();
  EXPECT_EQ(form.Controls().size(), known.size());
}

TEST_F(Controls, StandOnTheTabThatTheirPanelBelongsTo) {
  std::vector<std::string> panels;
  for (const forms::Control* panel : form.C1TTickersSettings.Children()) panels.push_back(panel->Name());
  EXPECT_THAT(panels, ElementsAre("C1ElaTickers", "C1ElaSettings", "C1ElaCharting", "C1ElaFields"));
  EXPECT_EQ(form.C1TTickersSettings.CurrTab(), 0);
}

TEST_F(Controls, ShowPicturesOnTheButtonsWithoutCaption) {
  for (const char* name : {"ButAllLeft", "ButAllRight", "ButDown", "ButUp", "ButLeft", "ButRight", "ButDel",
                           "ButTickerDown", "ButTickerUp"}) {
    SCOPED_TRACE(name);
    EXPECT_NE(dynamic_cast<forms::Button&>(*form.Find(name)).Picture(), "");
  }
  EXPECT_NE(form.ImageChart.Picture(), "");
}

TEST_F(Controls, TakeEnterForAddAndEscapeForCancel) {
  EXPECT_EQ(form.DefaultButton(), &form.ButAdd);
  EXPECT_EQ(form.CancelButton(), &form.ButCancel);
}

TEST_F(Controls, LetTheArrowUpOfEachBarRaiseItsNumber) {
  const struct {
    const forms::ScrollBar& bar;
    std::int32_t highest;
  } bars[] = {{form.VScrollChartPoints, 100},
              {form.VScrollDecimalplaces, 10},
              {form.VScrollRows, 3600},
              {form.VScrollSec, 3600}};
  for (const auto& row : bars) {
    SCOPED_TRACE(row.bar.Name());
    EXPECT_EQ(row.bar.Min(), row.highest);
    EXPECT_EQ(row.bar.Max(), 0);
  }
}

TEST_F(Controls, TakeAnyTextInDropDownLists) {
  for (const char* name :
       {"ComDisplayOffset", "ComDisplayTimezone", "ComQuoteSource", "ComStyle", "ComChartStyle"}) {
    SCOPED_TRACE(name);
    auto& box = dynamic_cast<forms::ComboBox&>(*form.Find(name));
    EXPECT_EQ(box.ComboStyle(), forms::ComboBox::Style::DropDown);
    EXPECT_THAT(box.Items(), IsEmpty());
  }
}

TEST_F(Controls, NameTheQuoteSourceForMessages) { EXPECT_EQ(form.ComQuoteSource.Tag(), "Quote Source"); }

TEST_F(Controls, BelongToADialogWithoutStoreThatFillsNothing) {
  EXPECT_EQ(form.frmAppSettings(), nullptr);
  EXPECT_FALSE(form.ReloadOnActivate());
  EXPECT_FALSE(form.VerticalClickArmed());
}

TEST_F(Controls, KeepWhatIsSetOnTheirDialog) {
  form.ReloadOnActivate(true);
  form.VerticalClickArmed(true);
  EXPECT_TRUE(form.ReloadOnActivate());
  EXPECT_TRUE(form.VerticalClickArmed());
}

}  // namespace
}  // namespace mirelo::testing
