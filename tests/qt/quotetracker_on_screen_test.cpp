// The settings dialog and QuoteTracker: portfolios, quote sources and Go, over real connections.

#include <QLabel>
#include <QMessageBox>

#include "qt/settings_dialog_test.h"

namespace mirelo::qt {
namespace {

using ::testing::ElementsAre;

using QuoteTrackerOnScreen = SettingsDialog;

// Quote sources: of the first run, and with those of the stand-in, which has one of them, too.
constexpr int kFirstRun = 80;
constexpr int kRefreshed = 170;

TEST_F(QuoteTrackerOnScreen, LendsAndTakesPortfolios) {
  person.Does("import", [] { Click("ButImport"); });
  person.Waits("the tickers", [] { return Tickers().size() == 5; });
  person.Does("look, add one and export", [] {
    EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM", "GE", "INTC", "CSCO"));
    AddTickers({"ORCL"});
    Click("ButExport");
  });
  person.Answers("QouteTracker portfolio updated", "OK");
  Show();
  EXPECT_THAT(rig.server.PortfoliosNow()[0].symbols,
              ElementsAre("MSFT", "IBM", "GE", "INTC", "CSCO", "ORCL"));
}

TEST_F(QuoteTrackerOnScreen, RefreshesTheSourcesOverItsStreamWhileTheDialogIsUp) {
  person.Does("ask for the sources", [] {
    Open(kSettings);
    Tick("chkUpdOrNot");
    EXPECT_EQ(Find<QComboBox>("ComQuoteSource")->count(), kFirstRun);
    Click("ButUpDate");
  });
  person.Waits("the sources", [] {
    return Find<QLabel>("lblStatus")->text() == QLatin1String("Data source list updated successfully");
  });
  person.Does("look", [] { EXPECT_EQ(Find<QComboBox>("ComQuoteSource")->count(), kRefreshed); });
  Show();
}

TEST_F(QuoteTrackerOnScreen, LetsTheDialogBeUsedWhileItsStreamSpeaks) {
  person.Does("ask for the sources and go on", [] {
    Open(kSettings);
    Tick("chkUpdOrNot");
    Click("ButUpDate");
    Open(kTickers);
    AddTickers({"MSFT", "IBM"});
  });
  person.Waits("the sources", [&] { return Find<QComboBox>("ComQuoteSource")->count() == kRefreshed; });
  person.Does("look", [] { EXPECT_THAT(Tickers(), ElementsAre("MSFT", "IBM")); });
  Show();
}

TEST_F(QuoteTrackerOnScreen, IsAskedByGoWhichStoresTheSettings) {
  person.Does("fill in and go", [] {
    AddTickers({"MSFT", "IBM"});
    Open(kSettings);
    Replace("txtWebAddress", "127.0.0.1");
    Person::Click(Find("txtSec"), QPoint(8, 8));
    Person::Press(Qt::Key_Home);
    Person::Press(Qt::Key_Delete);
    Person::Type("3");  // 30
    EXPECT_EQ(TextOf("txtSec"), "30");
    Click("ButGo");
  });
  EXPECT_EQ(rig.facade->LoadFrmMirelo(), 78);
  EXPECT_EQ(rig.Stored("Seconds"), "30");
  EXPECT_EQ(Person::TopWindow(), nullptr);
}

TEST_F(QuoteTrackerOnScreen, StreamsAfterAGoWithoutSeconds) {
  person.Does("fill in and go", [] {
    AddTickers({"MSFT"});
    Open(kSettings);
    Person::Click(Find("txtSec"), QPoint(8, 8));
    Person::Press(Qt::Key_Home);
    Person::Press(Qt::Key_Delete);  // 0
    EXPECT_EQ(TextOf("txtSec"), "0");
    Click("ButGo");
  });
  EXPECT_EQ(rig.facade->LoadFrmMirelo(), 77);
}

TEST_F(QuoteTrackerOnScreen, ThatDoesNotAnswerLeavesTheDialogUp) {
  rig.server.SetHttpFault(quotetracker::HttpFaultPlan::Parse("drop", 1));
  person.Does("fill in and go", [] {
    AddTickers({"MSFT"});
    Click("ButGo");
  });
  person.Waits("the box", [] { return Person::Box() != nullptr; });
  person.Does("read and close the box", [] {
    EXPECT_NE(Person::Box()->text(), QString());
    Person::Press(Qt::Key_Return);
  });
  person.Waits("the dialog", [] { return Person::TopWindow()->windowTitle() == QLatin1String("Dovanta"); });
  person.Does("look", [] { EXPECT_THAT(Tickers(), ElementsAre("MSFT")); });
  EXPECT_EQ(Show(), 2);
}

}  // namespace
}  // namespace mirelo::qt
