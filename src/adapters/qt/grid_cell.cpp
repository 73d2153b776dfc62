#include "adapters/qt/grid_cell.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

#include "adapters/qt/grid_model.h"
#include "adapters/qt/pictures.h"
#include "forms/layout/measures.h"

namespace mirelo::qt {

namespace {

constexpr int kPictureGap = 6;

}  // namespace

void GridCell::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& cell) const {
  if (!model_.IsCheckColumn(cell.column())) return QStyledItemDelegate::paint(painter, option, cell);
  QStyleOptionViewItem item = option;
  initStyleOption(&item, cell);
  const QStyle& style = item.widget != nullptr ? *item.widget->style() : *QApplication::style();
  style.drawPrimitive(QStyle::PE_PanelItemViewItem, &item, painter, item.widget);

  const std::string& picture = model_.PictureOf(cell);
  const QSize box(style.pixelMetric(QStyle::PM_IndicatorWidth, &item, item.widget),
                  style.pixelMetric(QStyle::PM_IndicatorHeight, &item, item.widget));
  const int width = box.width() + (picture.empty() ? 0 : kPictureGap + forms::layout::kSmallPicture);
  const QPoint middle = option.rect.center();
  const int left = middle.x() - width / 2;
  item.rect = QRect(QPoint(left, middle.y() - box.height() / 2), box);
  item.state = (option.state & ~QStyle::State_HasFocus) |
               (model_.IsTicked(cell) ? QStyle::State_On : QStyle::State_Off);
  style.drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &item, painter, item.widget);
  if (!picture.empty()) {
    const QRect place(left + box.width() + kPictureGap, middle.y() - forms::layout::kSmallPicture / 2,
                      forms::layout::kSmallPicture, forms::layout::kSmallPicture);
    Picture(picture).paint(painter, place, Qt::AlignCenter,
                           (option.state & QStyle::State_Enabled) != 0 ? QIcon::Normal : QIcon::Disabled);
  }
  if ((option.state & QStyle::State_HasFocus) != 0) {
    QStyleOptionFocusRect focus;
    focus.QStyleOption::operator=(option);
    style.drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, item.widget);
  }
}

}  // namespace mirelo::qt
