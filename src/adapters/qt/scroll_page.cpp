#include "adapters/qt/scroll_page.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>

namespace mirelo::qt {

namespace {

// What can be seen at least of a page that scrolls.
constexpr int kFewestLines = 6;
constexpr int kGapAround = 4;

bool MindsTheWheel(const QWidget& widget) {
  return qobject_cast<const QComboBox*>(&widget) != nullptr ||
         qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr;
}

}  // namespace

ScrollPage::ScrollPage(QWidget& contents) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  setWidget(&contents);
  // What lies behind the page is seen through it.
  contents.setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
  for (QWidget* const box : contents.findChildren<QWidget*>()) {
    if (!MindsTheWheel(*box)) continue;
    box->setFocusPolicy(Qt::StrongFocus);
    box->installEventFilter(this);
  }
}

QSize ScrollPage::sizeHint() const { return widget()->sizeHint(); }

QSize ScrollPage::minimumSizeHint() const {
  const int side = fontMetrics().lineSpacing() * kFewestLines;
  return widget()->minimumSizeHint().boundedTo({2 * side, side});
}

void ScrollPage::ShowWhole(const QWidget& widget) {
  const QRect place(widget.mapTo(this->widget(), QPoint(0, 0)), widget.size());
  ensureVisible(place.center().x(), place.center().y(), place.width() / 2 + kGapAround,
                place.height() / 2 + kGapAround);
}

// Qt sees to it that the cursor of a text can be seen, and is content with its upper half.
bool ScrollPage::focusNextPrevChild(bool next) {
  if (!QScrollArea::focusNextPrevChild(next)) return false;
  if (const QWidget* const focused = window()->focusWidget(); widget()->isAncestorOf(focused))
    ShowWhole(*focused);
  return true;
}

bool ScrollPage::eventFilter(QObject* watched, QEvent* event) {
  const auto* const box = qobject_cast<const QWidget*>(watched);
  if (event->type() != QEvent::Wheel || box == nullptr || !MindsTheWheel(*box) || box->hasFocus())
    return QScrollArea::eventFilter(watched, event);
  event->ignore();  // Qt offers it to what the box stands on
  return true;
}

void Reveal(QWidget& widget) {
  for (QWidget* outer = widget.parentWidget(); outer != nullptr; outer = outer->parentWidget()) {
    if (auto* const page = dynamic_cast<ScrollPage*>(outer)) page->ShowWhole(widget);
  }
}

}  // namespace mirelo::qt
