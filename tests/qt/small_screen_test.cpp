// The windows where there is little room for them.

#include <QtTest/qtestspontaneevent.h>
#include <QLabel>
#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>
#include <set>

#include "adapters/qt/scroll_page.h"
#include "qt/settings_dialog_test.h"
#include "qt/walk.h"

namespace mirelo::qt {
namespace {

class OnSmallScreen : public SettingsDialog {
 protected:
  static QWidget& Top() { return *QApplication::activeModalWidget(); }
  static QRect Screen() { return QGuiApplication::primaryScreen()->availableGeometry(); }
  // The page that scrolls of the tab in front.
  static ScrollPage& Page() {
    auto* page = dynamic_cast<ScrollPage*>(Find<QTabWidget>("C1TTickersSettings")->currentWidget());
    if (page == nullptr) throw std::runtime_error("the tab has no page that scrolls");
    return *page;
  }
  static void TurnWheelOver(QWidget& widget) {
    const QPointF place = widget.rect().center();
    QWheelEvent turn(place, widget.mapToGlobal(place), QPoint(), QPoint(0, -120), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&turn);  // or nobody but the widget would be offered it
    qApp->notify(&widget, &turn);
  }
};

TEST_F(OnSmallScreen, IsOne) {
  EXPECT_EQ(QGuiApplication::primaryScreen()->geometry().size(), QSize(960, 540));
  EXPECT_EQ(qApp->devicePixelRatio(), 2);
}

TEST_F(OnSmallScreen, TheSettingsDialogFitsWithItsButtonsInReach) {
  person.Does("look through the tabs", [] {
    // There is room for a title above it.
    EXPECT_LE(Top().height(), Screen().height() - 30);
    EXPECT_TRUE(Screen().contains(QRect(Top().pos(), Top().size())));
    for (const Tab tab : {kTickers, kSettings, kCharting, kFields}) {
      Open(tab);
      for (const char* button : {"ButGo", "ButClose", "ButCancel"})
        EXPECT_EQ(Find(button)->visibleRegion().boundingRect().size(), Find(button)->size()) << button;
      EXPECT_FALSE(Page().horizontalScrollBar()->isVisible()) << "only downwards";
    }
  });
  Show();
}

TEST_F(OnSmallScreen, WhatDoesNotFitScrollsToWhereTheKeyboardGoes) {
  person.Does("walk through the settings", [] {
    Open(kSettings);
    EXPECT_TRUE(Page().verticalScrollBar()->isVisible());
    std::set<std::string> reached;
    for (QWidget* widget : WalkWithTab(Top())) {
      widget->setFocus();
      Reveal(*widget);
      reached.insert(widget->objectName().toStdString());
    }
    for (const char* control : {"txtSec", "txtWebAddress", "ComStyle", "txtVerticalSheet"})
      EXPECT_EQ(reached.count(control), 1U) << control;
  });
  person.Does("walk by the Tab key alone", [] {
    Top().resize(Top().width(), 300);
    Find("chkUpdOrNot")->setFocus();
    for (int i = 0; i < 40 && QApplication::focusWidget() != Find("txtVerticalSheet"); ++i) {
      Person::Press(Qt::Key_Tab);
      const QWidget& widget = *QApplication::focusWidget();
      EXPECT_EQ(widget.visibleRegion().boundingRect().size(), widget.size())
          << widget.objectName().toStdString() << " is seen whole";
    }
    EXPECT_EQ(QApplication::focusWidget(), Find("txtVerticalSheet"));
  });
  Show();
}

TEST_F(OnSmallScreen, TheWheelScrollsThePageAndChangesNoBoxOnItsWay) {
  person.Does("turn the wheel over a box", [] {
    Open(kSettings);
    Find("txtWebAddress")->setFocus();
    Page().verticalScrollBar()->setValue(0);
    const std::string zone = TextOf("ComDisplayTimezone");
    TurnWheelOver(*Find("ComDisplayTimezone"));
    EXPECT_EQ(TextOf("ComDisplayTimezone"), zone);
    EXPECT_GT(Page().verticalScrollBar()->value(), 0);
  });
  person.Does("turn it over the box that has the focus", [] {
    Find("ComDisplayTimezone")->setFocus();
    const std::string zone = TextOf("ComDisplayTimezone");
    TurnWheelOver(*Find("ComDisplayTimezone"));
    EXPECT_NE(TextOf("ComDisplayTimezone"), zone);
  });
  Show();
}

TEST_F(OnSmallScreen, HeadersOfTheTickersAreWhole) {
  person.Does("look", [] {
    Open(kTickers);
    ExpectWholeHeaders(*Find<GridView>("FG"));
  });
  Show();
}

TEST_F(OnSmallScreen, ThePaletteFits) {
  person.Does("press On", [] {
    Open(kSettings);
    Find("ButOn")->setFocus();
    Person::Press(Qt::Key_Space);
  });
  person.Waits("the palette",
               [] { return Person::TopWindow()->windowTitle() == QLatin1String("Fill Color (On)"); });
  person.Does("look", [] {
    EXPECT_LE(Top().height(), Screen().height() - 30);
    EXPECT_TRUE(Screen().contains(QRect(Top().pos(), Top().size())));
    Top().close();
  });
  person.Waits("the dialog", [] { return Person::TopWindow()->windowTitle() == QLatin1String("Dovanta"); });
  Show();
}

}  // namespace
}  // namespace mirelo::qt
