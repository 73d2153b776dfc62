#include "adapters/qt/focus_arrows.h"

#include <QKeyEvent>
#include <QWidget>
#include <algorithm>
#include <utility>

namespace mirelo::qt {

FocusArrows::FocusArrows(std::vector<QWidget*> cells, int rows)
    : QObject(cells.at(0)), cells_(std::move(cells)), rows_(rows) {
  for (QWidget* cell : cells_) cell->installEventFilter(this);
}

bool FocusArrows::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  int step = 0;
  switch (static_cast<const QKeyEvent*>(event)->key()) {
    case Qt::Key_Up:
      step = -1;
      break;
    case Qt::Key_Down:
      step = 1;
      break;
    case Qt::Key_Left:
      step = -rows_;
      break;
    case Qt::Key_Right:
      step = rows_;
      break;
    default:
      return false;
  }
  const auto place = std::find(cells_.begin(), cells_.end(), watched) - cells_.begin() + step;
  if (place >= 0 && place < std::ssize(cells_)) cells_[static_cast<std::size_t>(place)]->setFocus();
  return true;
}

}  // namespace mirelo::qt
