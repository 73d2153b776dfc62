#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QStyle>
#include <QWidget>
#include <algorithm>
#include <string>
#include <vector>

#include "adapters/qt/grid_view.h"
#include "qt/person.h"

namespace mirelo::qt {

// What the Tab key reaches in a window, in that order, until it comes back.
inline std::vector<QWidget*> WalkWithTab(QWidget& window) {
  std::vector<QWidget*> way;
  for (int i = 0; i < 200; ++i) {
    QWidget* const reached = window.focusWidget();
    if (std::find(way.begin(), way.end(), reached) != way.end()) return way;
    way.push_back(reached);
    Person::Press(Qt::Key_Tab);
  }
  ADD_FAILURE() << "the Tab key never comes back";
  return way;
}

inline QRect PlaceInWindow(const QWidget& widget) {
  return {widget.mapTo(widget.window(), QPoint(0, 0)), widget.size()};
}

// Whether the eye comes to `next` behind `one`: it stands to the right of it, or below.
inline bool IsReadBehind(const QRect& one, const QRect& next) {
  return next.left() >= one.right() || next.top() >= one.bottom();
}

// Expects the way through a window to go as the eye does, from wherever it began, and to turn back to the
// beginning once.
inline void ExpectInReadingOrder(const std::vector<QWidget*>& way) {
  int turns = 0;
  for (std::size_t i = 0; i < way.size(); ++i) {
    const QWidget& one = *way[i];
    const QWidget& next = *way[(i + 1) % way.size()];
    if (IsReadBehind(PlaceInWindow(one), PlaceInWindow(next))) continue;
    EXPECT_EQ(++turns, 1) << "from " << one.objectName().toStdString() << " to "
                          << next.objectName().toStdString();
  }
}

// The way passes everything that can be used, and more than a few things at that.
inline void ExpectLeavesNothingOut(const std::vector<QWidget*>& way) {
  ASSERT_GE(way.size(), 4U);
  for (const QWidget* widget : way.front()->window()->findChildren<QWidget*>()) {
    const bool is_control =
        !widget->objectName().isEmpty() && !widget->objectName().startsWith(QLatin1String("qt_"));
    const bool can_be_used = widget->isVisible() && widget->isEnabled() && widget->focusProxy() == nullptr &&
                             (widget->focusPolicy() & Qt::TabFocus) != 0;
    if (!is_control || !can_be_used) continue;
    EXPECT_NE(std::find(way.begin(), way.end(), widget), way.end()) << widget->objectName().toStdString();
  }
}

// Every header can be read as a whole.
inline void ExpectWholeHeaders(const GridView& grid) {
  const QHeaderView& header = *grid.horizontalHeader();
  const int margins = 2 * header.style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, &header);
  ASSERT_GT(grid.model()->columnCount(), 2);
  for (int column = 0; column < grid.model()->columnCount(); ++column) {
    const QString text = grid.model()->headerData(column, Qt::Horizontal).toString();
    EXPECT_GE(header.sectionSize(column), header.fontMetrics().horizontalAdvance(text) + margins)
        << text.toStdString();
  }
}

}  // namespace mirelo::qt
