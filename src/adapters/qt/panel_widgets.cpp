// The controls that hold others: panels and strips of tabs.

#include <QBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QTabBar>
#include <QTabWidget>

#include "adapters/qt/form_builder.h"
#include "adapters/qt/pictures.h"
#include "adapters/qt/scroll_page.h"
#include "adapters/qt/text.h"
#include "adapters/qt/view.h"
#include "forms/layout/measures.h"
#include "forms/simple_controls.h"
#include "forms/tab.h"

namespace mirelo::qt {

namespace {

constexpr int kPanelMargin = 12;

QLabel* NewHeading() {
  auto* heading = new QLabel;
  heading->setTextFormat(Qt::PlainText);
  QFont font = heading->font();
  font.setBold(true);
  font.setPointSizeF(font.pointSizeF() * 1.15);
  heading->setFont(font);
  return heading;
}

}  // namespace

// The panel's picture stands at its left and its text above its children.
QWidget* FormBuilder::MakePanel(forms::Panel& panel) {
  auto* widget = new QWidget;
  auto* across = new QHBoxLayout(widget);
  across->setContentsMargins(0, 0, 0, 0);
  across->setSpacing(kPanelMargin);
  auto* picture = new QLabel;
  across->addWidget(picture);
  auto* down = new QVBoxLayout;
  across->addLayout(down, 1);
  auto* heading = NewHeading();
  down->addWidget(heading);
  if (!panel.Children().empty()) {
    auto* inside = new QWidget;
    Fill(*inside, panel.Name(), panel.Children());
    down->addWidget(inside, 1);
  }
  views_.Add(panel, *widget, [&panel, widget, picture, heading] {
    ShowState(panel, *widget);
    heading->setText(Shown(panel.Caption()));
    heading->setVisible(!panel.Caption().empty());
    picture->setPixmap(Picture(panel.Picture()).pixmap(forms::layout::kLargePicture));
    picture->setVisible(!panel.Picture().empty());
  });
  return widget;
}

QWidget* FormBuilder::MakeTab(forms::Tab& tab) {
  auto* widget = new QTabWidget;
  for (forms::Control* child : tab.Children()) {
    auto* page = new QWidget;
    Fill(*page, child->Name(), child->Children());
    page->layout()->setContentsMargins(kPanelMargin, kPanelMargin, kPanelMargin, kPanelMargin);
    const auto number = static_cast<std::size_t>(widget->count());
    widget->addTab(new ScrollPage(*page),
                   number < tab.Captions().size() ? Shown(tab.Captions()[number]) : QString());
    // Which page is visible is the strip's affair.
    views_.Add(*child, *page, [child, page] { page->setEnabled(child->Enabled()); });
  }
  const View& view = views_.Add(tab, *widget, [&tab, widget] {
    ShowState(tab, *widget);
    const QSignalBlocker quiet(widget);
    widget->setCurrentIndex(tab.CurrTab());
  });
  QObject::connect(widget, &QTabWidget::currentChanged, widget,
                   [&tab, &view](int number) { view.Act([&] { tab.UserSelect(number); }); });
  // A click on the current tab changes nothing, so it is told of by no other signal.
  QObject::connect(widget, &QTabWidget::tabBarClicked, widget, [&tab, &view](int number) {
    if (number == tab.CurrTab()) view.Act([&] { tab.UserSelect(number); });
  });
  return widget;
}

}  // namespace mirelo::qt
