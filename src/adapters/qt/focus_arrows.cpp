#include "adapters/qt/focus_arrows.h"

#include <QKeyEvent>
#include <QWidget>
#include <algorithm>
#include <cstddef>
#include <utility>

namespace mirelo::qt {

namespace {

bool IsArrow(int key) {
  return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Left || key == Qt::Key_Right;
}

}  // namespace

FocusArrows::FocusArrows(std::vector<QWidget*> cells, int rows, QWidget* above)
    : QObject(cells.at(0)),
      cells_(std::move(cells)),
      rows_(rows),
      above_(above),
      left_below_(cells_.front()) {
  for (QWidget* cell : cells_) cell->installEventFilter(this);
  if (above_ != nullptr) above_->installEventFilter(this);
}

bool FocusArrows::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent*>(event)->key();
  if (!IsArrow(key)) return false;
  if (QWidget* const reached = Reached(watched, key)) reached->setFocus();
  return true;
}

QWidget* FocusArrows::Reached(QObject* from, int key) {
  if (from == above_) return key == Qt::Key_Down || key == Qt::Key_Right ? left_below_ : nullptr;
  const auto place = static_cast<int>(std::find(cells_.begin(), cells_.end(), from) - cells_.begin());
  const int row = place % rows_;
  if (key == Qt::Key_Up && row == 0) {
    left_below_ = cells_[static_cast<std::size_t>(place)];
    return above_;
  }
  if (key == Qt::Key_Down && row == rows_ - 1) return nullptr;
  const int step = key == Qt::Key_Up ? -1 : key == Qt::Key_Down ? 1 : key == Qt::Key_Left ? -rows_ : rows_;
  const int reached = place + step;
  const bool exists = reached >= 0 && reached < static_cast<int>(cells_.size());
  return exists ? cells_[static_cast<std::size_t>(reached)] : nullptr;
}

}  // namespace mirelo::qt
