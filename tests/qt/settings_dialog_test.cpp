// The settings dialog, tab by tab.

#include "qt/settings_dialog_test.h"

#include <QLabel>

#include "adapters/qt/form_window.h"

namespace mirelo::qt {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

TEST_F(SettingsDialog, OpensOnItsFirstTabWithTheDefaults) {
  person.Does("look through the tabs", [&] {
    EXPECT_EQ(QApplication::activeModalWidget()->windowTitle(), QLatin1String("Dovanta"));
    EXPECT_TRUE(Find("FG")->isVisible());
    EXPECT_TRUE(IsTicked("chkVerTable"));
    EXPECT_TRUE(IsTicked("chkLimitRows"));
    EXPECT_EQ(TextOf("txtRows"), "20");
    Open(kSettings);
    EXPECT_TRUE(Find("txtSec")->isVisible());
    EXPECT_FALSE(Find("FG")->isVisible());
    EXPECT_EQ(TextOf("txtSec"), "60");
    EXPECT_EQ(TextOf("ComDisplayTimezone"), "(ET) US Eastern");
    EXPECT_EQ(TextOf("ComDisplayOffset"), "0:00");
    EXPECT_EQ(TextOf("ComStyle"), "Blue");
    EXPECT_EQ(Find<QComboBox>("ComDisplayTimezone")->count(), 17);
    EXPECT_EQ(Find<QComboBox>("ComDisplayOffset")->count(), 95);
    EXPECT_FALSE(Find("ComQuoteSource")->isEnabled());
    EXPECT_EQ(Find<QLabel>("lblExample")->text(), QLatin1String("2.12"));
    Open(kCharting);
    EXPECT_TRUE(Find("ComChartStyle")->isVisible());
    EXPECT_FALSE(IsTicked("chkBuildCharts"));
    Open(kFields);
    EXPECT_THAT(Items("ListRight"), ElementsAre("Ticker", "Last", "Change", "Bid", "Ask", "Date", "Time"));
    EXPECT_EQ(Items("ListLeft").size(), 12U);
    EXPECT_TRUE(Find("ListLeft")->hasFocus());
  });
  EXPECT_EQ(Show(), 2);
}

TEST_F(SettingsDialog, TakesTickersAsSoonAsItIsUp) {
  person.Does("type", [] {
    Person::Type("msft");
    Person::Press(Qt::Key_Return);
  });
  person.Does("look", [] { EXPECT_THAT(Tickers(), ElementsAre("MSFT")); });
  Show();
}

TEST_F(SettingsDialog, IsWalkedThroughByTheLettersOfItsTabs) {
  const std::pair<Qt::Key, const char*> letters[] = {
      {Qt::Key_S, "txtSec"}, {Qt::Key_C, "chkBuildCharts"}, {Qt::Key_F, "ListLeft"}, {Qt::Key_T, "FG"}};
  for (const auto& [key, control] : letters) {
    person.Does("press Alt and a letter", [key = key, control = control] {
      Person::Press(key, Qt::AltModifier);
      EXPECT_TRUE(Find(control)->isVisible()) << control;
    });
  }
  Show();
}

TEST_F(SettingsDialog, EndsByEscapeCancelCloseAndCloseBox) {
  const std::pair<const char*, std::function<void()>> ends[] = {
      {"press Escape", [] { Person::Press(Qt::Key_Escape); }},
      {"press Cancel", [] { Click("ButCancel"); }},
      {"press Close", [] { Click("ButClose"); }},
      {"use the close box", [] { QApplication::activeModalWidget()->close(); }},
  };
  for (const auto& [what, act] : ends) {
    SCOPED_TRACE(what);
    person.Does(what, act);
    EXPECT_EQ(rig.facade->LoadFrmMirelo(), 2);
    EXPECT_EQ(Person::TopWindow(), nullptr);
  }
}

TEST_F(SettingsDialog, RefusesLettersInANumberAndKeepsThem) {
  person.Does("type a letter", [] {
    Open(kSettings);
    Person::Click(Find("txtSec"), QPoint(8, 8));
    Person::Press(Qt::Key_End);
    Person::Type("x");
  });
  person.Answers("The value must be a digit.", "OK");
  person.Does("look", [] {
    EXPECT_EQ(TextOf("txtSec"), "60x");
    EXPECT_EQ(QApplication::activeModalWidget()->focusWidget(), Find("txtSec"));
    Person::Press(Qt::Key_Backspace);
    EXPECT_EQ(TextOf("txtSec"), "60");
  });
  Show();
}

TEST_F(SettingsDialog, HoldsNumbersWithinTheirBounds) {
  person.Does("type too much", [] {
    Open(kSettings);
    Person::Click(Find("txtSec"), QPoint(8, 8));
    Person::Press(Qt::Key_End);
    Person::Type("00");  // 6000
    EXPECT_EQ(TextOf("txtSec"), "3600");
    Person::Click(Find("txtDecimalPlaces"), QPoint(8, 8));
    Person::Press(Qt::Key_End);
    Person::Type("5");
    EXPECT_EQ(TextOf("txtDecimalPlaces"), "10");
    EXPECT_EQ(Find<QLabel>("lblExample")->text(), QLatin1String("2.1234567890"));
  });
  person.Does("press the arrows", [] {
    QWidget* box = Find("txtDecimalPlaces");
    const QPoint up(box->width() - 6, 6), down(box->width() - 6, box->height() - 6);
    Person::Click(box, up);
    EXPECT_EQ(TextOf("txtDecimalPlaces"), "10");
    Person::Click(box, down);
    EXPECT_EQ(TextOf("txtDecimalPlaces"), "9");
    EXPECT_EQ(Find<QLabel>("lblExample")->text(), QLatin1String("2.123456789"));
  });
  Show();
}

TEST_F(SettingsDialog, OffersQuoteSourcesWhenQuotesAreToBeStreamed) {
  person.Does("choose no seconds", [] {
    Open(kSettings);
    Tick("chkUpdOrNot");
    EXPECT_EQ(TextOf("txtSec"), "0");
    EXPECT_FALSE(Find("txtSec")->isEnabled());
    EXPECT_TRUE(Find("ComQuoteSource")->isEnabled());
    EXPECT_EQ(Find<QComboBox>("ComQuoteSource")->count(), 80);
    Tick("chkUpdOrNot");
    EXPECT_TRUE(Find("txtSec")->isEnabled());
  });
  Show();
}

TEST_F(SettingsDialog, CleansTheNameOfTheVerticalSheetsWhileItIsTyped) {
  person.Does("type", [] {
    Open(kSettings);
    Replace("txtVerticalSheet", "a/b");
    EXPECT_EQ(TextOf("txtVerticalSheet"), "a_b");
    EXPECT_EQ(Find<QLabel>("lblExampleSheet")->text(), QLatin1String("a_b(Ticker)"));
  });
  Show();
}

TEST_F(SettingsDialog, ShowsNoStyleWhenItsBoxIsNotTicked) {
  person.Does("untick and tick", [] {
    Open(kSettings);
    Tick("chkStyleOrNot");
    EXPECT_EQ(TextOf("ComStyle"), "None");
    EXPECT_FALSE(Find("ComStyle")->isEnabled());
    Tick("chkStyleOrNot");
    EXPECT_EQ(TextOf("ComStyle"), "Blue");
  });
  Show();
}

TEST_F(SettingsDialog, ChoosesATimeZoneFromItsList) {
  person.Does("open the list", [] {
    Open(kSettings);
    QWidget* box = Find("ComDisplayTimezone");
    Person::Click(box, QPoint(box->width() - 8, box->height() / 2));
  });
  person.Waits("the list", [] { return QApplication::activePopupWidget() != nullptr; });
  person.Does("choose", [] {
    Person::Press(Qt::Key_End);
    Person::Press(Qt::Key_Return);
  });
  person.Waits("the list to close", [] { return QApplication::activePopupWidget() == nullptr; });
  person.Does("look", [] { EXPECT_EQ(TextOf("ComDisplayTimezone"), "(ET+16) New ZealandTicker"); });
  Show();
}

TEST_F(SettingsDialog, MovesColumnsBetweenItsListsByButtonsAndDoubleClicks) {
  person.Does("move one to the right", [] {
    Open(kFields);
    Person::Click(Find<QListWidget>("ListLeft")->viewport(), PlaceOf("ListLeft", 1));
    EXPECT_TRUE(Find("ButRight")->isEnabled());
    EXPECT_FALSE(Find("ButLeft")->isEnabled());
    Click("ButRight");
    EXPECT_EQ(Items("ListRight").back(), "Volume");
    EXPECT_EQ(Find<QListWidget>("ListRight")->currentRow(), 7);
  });
  person.Does("move it up", [] {
    Click("ButUp");
    Click("ButUp");
    EXPECT_THAT(Items("ListRight"),
                ElementsAre("Ticker", "Last", "Change", "Bid", "Ask", "Volume", "Date", "Time"));
    Click("ButDown");
  });
  person.Does("double click", [] {
    Person::DoubleClick(Find<QListWidget>("ListLeft")->viewport(), PlaceOf("ListLeft", 0));
    EXPECT_EQ(Items("ListRight").back(), "Tick");
    Person::DoubleClick(Find<QListWidget>("ListRight")->viewport(), PlaceOf("ListRight", 1));
    EXPECT_EQ(Items("ListLeft").back(), "Last");
    Person::DoubleClick(Find<QListWidget>("ListRight")->viewport(), PlaceOf("ListRight", 0));
    EXPECT_EQ(Items("ListRight").front(), "Ticker") << "the ticker column stays";
  });
  person.Does("move all", [] {
    Person::Click(Find<QListWidget>("ListLeft")->viewport(), PlaceOf("ListLeft", 0));
    Click("ButAllRight");
    EXPECT_TRUE(Items("ListLeft").empty());
    Click("ButAllLeft");
    EXPECT_THAT(Items("ListRight"), ElementsAre("Ticker"));
  });
  Show();
}

TEST_F(SettingsDialog, PicksAFillColorFromThePalette) {
  person.Does("press On", [] {
    Open(kSettings);
    Click("ButOn");
  });
  person.Waits("the palette",
               [] { return Person::TopWindow()->windowTitle() == QLatin1String("Fill Color (On)"); });
  person.Does("pick dark teal", [] {
    EXPECT_EQ(Find("L1(21)")->toolTip(), QLatin1String("DarkTeal"));
    Click("L1(21)");
  });
  person.Waits("the dialog", [] { return Person::TopWindow()->windowTitle() == QLatin1String("Dovanta"); });
  person.Does("look", [] {
    const QImage swatch = Find("txtOn")->grab().toImage();
    EXPECT_EQ(swatch.pixel(swatch.width() / 2, swatch.height() / 2), qRgb(0x00, 0x33, 0x66));
  });
  Show();
  EXPECT_EQ(rig.Stored("FillColorON"), "6697728");
}

TEST_F(SettingsDialog, PicksNoColorByTheKeyboardOrNoneAtAllByTheCloseBox) {
  person.Does("press Off", [] {
    Open(kSettings);
    Click("ButOff");
  });
  person.Waits("the palette",
               [] { return Person::TopWindow()->windowTitle() == QLatin1String("Fill Color (Off)"); });
  person.Does("close it", [] { QApplication::activeModalWidget()->close(); });
  person.Waits("the dialog", [] { return Person::TopWindow()->windowTitle() == QLatin1String("Dovanta"); });
  person.Does("press Off again", [&] {
    EXPECT_EQ(rig.Stored("FillColorOFF"), "");
    Click("ButOff");
  });
  person.Waits("the palette",
               [] { return Person::TopWindow()->windowTitle() == QLatin1String("Fill Color (Off)"); });
  person.Does("press the blank key on the first cell", [] {
    EXPECT_TRUE(Find("L1(0)")->hasFocus());
    Person::Press(Qt::Key_Space);
  });
  person.Waits("the dialog", [] { return Person::TopWindow()->windowTitle() == QLatin1String("Dovanta"); });
  Show();
  EXPECT_EQ(rig.Stored("FillColorOFF"), "-4142");
}

TEST_F(SettingsDialog, OpensWhereItWasClosed) {
  person.Does("move it and close", [] {
    QApplication::activeModalWidget()->move(40, 30);
    QApplication::activeModalWidget()->resize(700, 580);
    Click("ButClose");
  });
  rig.facade->LoadFrmMirelo();
  person.Does("look", [] {
    EXPECT_EQ(QApplication::activeModalWidget()->pos(), QPoint(40, 30));
    EXPECT_EQ(QApplication::activeModalWidget()->size(), QSize(700, 580));
  });
  Show();
}

TEST_F(SettingsDialog, NamesEveryFieldForScreenReaders) {
  person.Does("look", [] {
    for (const char* control : {"txtTicker",
                                "FG",
                                "txtRows",
                                "txtSec",
                                "ComQuoteSource",
                                "txtWebAddress",
                                "txtHTTPPort",
                                "txtSocketPort",
                                "ComDisplayTimezone",
                                "ComDisplayOffset",
                                "ComStyle",
                                "txtDecimalPlaces",
                                "txtVerticalSheet",
                                "ComChartStyle",
                                "txtChartPoints",
                                "ListLeft",
                                "ListRight",
                                "ButTickerUp",
                                "ButTickerDown",
                                "ButDel",
                                "ButUp",
                                "ButDown",
                                "ButLeft",
                                "ButAllLeft",
                                "ButRight",
                                "ButAllRight"}) {
      EXPECT_FALSE(Find(control)->accessibleName().isEmpty()) << control;
    }
    EXPECT_EQ(Find("txtWebAddress")->accessibleName(), QLatin1String("Address"));
    EXPECT_EQ(Find("txtSec")->accessibleName(), QLatin1String("Update every"));
  });
  Show();
}

TEST_F(SettingsDialog, FitsItsTextsIntoItsWindow) {
  person.Does("look through the tabs", [] {
    for (const Tab tab : {kTickers, kSettings, kCharting, kFields}) {
      Open(tab);
      const QRect window(QPoint(0, 0), QApplication::activeModalWidget()->size());
      for (const QWidget* widget : QApplication::activeModalWidget()->findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->objectName().isEmpty()) continue;
        const QRect place(widget->mapTo(widget->window(), QPoint(0, 0)), widget->size());
        EXPECT_TRUE(window.contains(place)) << widget->objectName().toStdString();
        if (qobject_cast<const QAbstractButton*>(widget) != nullptr ||
            qobject_cast<const QLabel*>(widget) != nullptr) {
          EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << widget->objectName().toStdString();
        }
      }
    }
  });
  Show();
}

}  // namespace
}  // namespace mirelo::qt
