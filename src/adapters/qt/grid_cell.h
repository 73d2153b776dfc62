#pragma once

#include <QStyledItemDelegate>

namespace mirelo::qt {

class GridModel;

// Draws the check cells of a grid: the box in the middle, and the cell's picture beside it.
class GridCell final : public QStyledItemDelegate {
 public:
  GridCell(const GridModel& model, QObject* parent) : QStyledItemDelegate(parent), model_(model) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& cell) const override;

 private:
  const GridModel& model_;
};

}  // namespace mirelo::qt
