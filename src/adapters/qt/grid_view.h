#pragma once

#include <QPoint>
#include <QTableView>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "adapters/qt/grid_model.h"

namespace mirelo::qt {

class QtLoop;
class View;

// Shows a grid. What is clicked, dragged over and reached with the keyboard goes to the grid, whose selection
// this view then shows: it has none of its own.
//
// A change of the grid is shown when events are handled next, so that a routine that fills a thousand cells
// is not slowed down a thousand times.
class GridView final : public QTableView {
 public:
  GridView(forms::Grid& grid, QtLoop& loop);

  void Follow(const View& view) { view_ = &view; }
  // Widths in twips that nobody has chosen: a column of one of them is at least as wide as its header.
  void SetUsualWidths(std::vector<std::int32_t> twips) { usual_widths_ = std::move(twips); }
  // Marks what is shown as out of date.
  void Invalidate();

  // The button in the corner: selects everything.
  void selectAll() override;

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // A cell in the grid's own numbers.
  struct Place {
    std::int32_t row = -1;
    std::int32_t col = -1;
    friend bool operator==(const Place&, const Place&) = default;
  };

  void Update();
  void ShowColumns();
  int WidthOf(int column) const;
  void ShowSelection(Place from, Place to);
  QModelIndex CellOf(Place place) const;
  Place PlaceAt(QPoint position) const;
  Place Reached(int key, Place from) const;
  bool Edit(QEvent* typed);
  void Act(const std::function<void()>& act);

  forms::Grid& grid_;
  GridModel model_;
  const View* view_ = nullptr;
  std::vector<std::int32_t> usual_widths_;
  bool out_of_date_ = false;
  bool showing_columns_ = false;  // so that no change of a width is a person's
  Place pressed_;                 // none while the mouse is not down
  Place dragged_to_;
  Place shown_active_;
};

}  // namespace mirelo::qt
