// The tickers and their ticks in the settings dialog.

#include "qt/settings_dialog_test.h"

namespace mirelo::qt {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using TickersOnScreen = SettingsDialog;

TEST_F(TickersOnScreen, AreAddedByEnterAndByTheButton) {
  person.Does("type tickers", [] {
    AddTickers({"msft", "IBM", "Msft"});
    Person::Type("ge");
    Click("ButAdd");
    Person::Type("t");  // the focus is in the box again
    EXPECT_EQ(TextOf("txtTicker"), "t");
  });
  person.Does("look", [] { EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM", "GE")); });
  Show();
}

TEST_F(TickersOnScreen, AreSortedMovedAndDeleted) {
  person.Does("add and sort", [] {
    AddTickers({"MSFT", "IBM", "GE"});
    Click("ButSort");
  });
  person.Does("look and sort again", [] {
    EXPECT_THAT(Tickers(), ElementsAre("GE", "IBM", "MSFT"));
    Click("ButSort");
  });
  person.Does("look and move", [] {
    EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM", "GE"));
    ClickCell(2, "Ticker");
    Click("ButTickerUp");
  });
  person.Does("look and move down twice", [] {
    EXPECT_THAT(Tickers(), ElementsAre("MSFT", "GE", "IBM"));
    Click("ButTickerDown");
    Click("ButTickerDown");
  });
  person.Does("look and delete", [] {
    EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM", "GE"));
    Click("ButDel");
  });
  person.Does("look", [] { EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM")); });
  Show();
}

TEST_F(TickersOnScreen, AreTickedByMouseBlankKeyAndHeaders) {
  person.Does("tick a cell", [] {
    AddTickers({"MSFT", "IBM"});
    ClickCell(0, "Last");
  });
  person.Does("look and tick with the keyboard", [] {
    EXPECT_THAT(TickedFields(0), ElementsAre("Last"));
    Person::Press(Qt::Key_Right);
    Person::Press(Qt::Key_Space);
  });
  person.Does("look and tick a column", [] {
    EXPECT_THAT(TickedFields(0), ElementsAre("Last", "Change"));
    EXPECT_THAT(TickedFields(1), IsEmpty());
    ClickHeader("Bid");
  });
  person.Does("look and clear everything", [] {
    EXPECT_THAT(TickedFields(0), ElementsAre("Last", "Change", "Bid"));
    EXPECT_THAT(TickedFields(1), ElementsAre("Bid"));
    Person::Click(Find<GridView>("FG")->findChild<QAbstractButton*>());
  });
  person.Does("look", [] {
    EXPECT_THAT(TickedFields(0), IsEmpty());
    EXPECT_THAT(TickedFields(1), IsEmpty());
  });
  Show();
}

TEST_F(TickersOnScreen, GetChartsOnlyWithTheFieldsThatChartsNeed) {
  person.Does("ask for charts", [] {
    AddTickers({"MSFT"});
    Open(kCharting);
    Tick("chkBuildCharts");
    Open(kTickers);
  });
  person.Does("tick the chart", [] { ClickCell(0, "Charts (Last & Volume)"); });
  person.Answers("Add  the 'LastVolume' column for the vertical output.", "OK");
  person.Does("add the field", [] {
    EXPECT_THAT(TickedFields(0), IsEmpty());
    Open(kFields);
    Person::DoubleClick(Find<QListWidget>("ListLeft")->viewport(), PlaceOf("ListLeft", 6));
    EXPECT_EQ(Items("ListRight").back(), "LastVolume");
    Open(kTickers);
  });
  person.Does("tick the chart again", [] { ClickCell(0, "Charts (Last & Volume)"); });
  person.Does("look", [] {
    EXPECT_THAT(TickedFields(0), ElementsAre("Last", "LastVolume", "Charts (Last & Volume)"));
    EXPECT_EQ(Find<GridView>("FG")->model()->index(0, ColumnOf("Charts (Last & Volume)")).data(), QVariant());
  });
  Show();
}

TEST_F(TickersOnScreen, StandInOneColumnWithoutTheVerticalTable) {
  person.Does("untick the table", [] {
    AddTickers({"MSFT", "IBM"});
    Tick("chkVerTable");
  });
  person.Does("look", [] {
    EXPECT_EQ(Find<GridView>("FG")->model()->columnCount(), 1);
    EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM"));
    EXPECT_FALSE(Find("txtRows")->isEnabled());
  });
  Show();
}

TEST_F(TickersOnScreen, KeepTheWidthsOfTheirColumnsWhenTheDialogIsClosed) {
  const auto drag_border = [] {
    QHeaderView* top = Find<GridView>("FG")->horizontalHeader();
    const QPoint border(top->sectionViewportPosition(0) + top->sectionSize(0) - 2, top->height() / 2);
    Person::Drag(top->viewport(), border, border + QPoint(40, 0));
  };
  int before = 0;
  person.Does("drag a border and cancel", [&] {
    before = Find<GridView>("FG")->columnWidth(0);
    drag_border();
    EXPECT_EQ(Find<GridView>("FG")->columnWidth(0), before + 40);
    Click("ButCancel");
  });
  rig.facade->LoadFrmMirelo();
  person.Does("drag a border and close", [&] {
    EXPECT_EQ(Find<GridView>("FG")->columnWidth(0), before) << "cancelled";
    drag_border();
    Click("ButClose");
  });
  rig.facade->LoadFrmMirelo();
  person.Does("look", [&] { EXPECT_EQ(Find<GridView>("FG")->columnWidth(0), before + 40); });
  Show();
}

}  // namespace
}  // namespace mirelo::qt
