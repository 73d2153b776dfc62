#pragma once

#include <com/sun/star/awt/KeyEvent.hpp>
#include <com/sun/star/awt/MouseEvent.hpp>
#include <com/sun/star/awt/grid/XGridColumnModel.hpp>
#include <com/sun/star/awt/grid/XGridControl.hpp>
#include <com/sun/star/awt/grid/XMutableGridDataModel.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "adapters/calc/views/views.h"
#include "forms/grid.h"

namespace mirelo::calc {

// Shows a grid as a table of the office's, whose headers are the header row and the fixed column. Check cells
// are pictures there. What is clicked goes to the grid, and so do the cells that the arrow keys reach and the
// blank key; the table shows of the selection the rows that are selected as a whole, and the active cell.
//
// A change of the grid is shown when the loop takes its next step, so that a routine that fills a thousand
// cells is not slowed down a thousand times.
class GridView {
 public:
  GridView(forms::Grid& grid, View& view, Views& views, std::vector<std::int32_t> usual_widths);

  // Begins to listen to the table. To be called once its window is there.
  void Connect();
  // Marks what is shown as out of date.
  void Invalidate();

 private:
  struct Cell {
    std::string text;
    std::string picture;
    bool check = false;
    friend bool operator==(const Cell&, const Cell&) = default;
  };
  struct Column {
    std::string title;
    std::int32_t width = 0;  // pixels
    forms::Grid::Alignment alignment = forms::Grid::Alignment::General;
    bool check = false;
    friend bool operator==(const Column&, const Column&) = default;
  };

  void Update();
  void ShowColumns();
  void ShowCells();
  void ShowSelection();
  Column ColumnOf(std::int32_t col) const;
  std::int32_t WidthOf(std::int32_t col) const;
  Cell CellOf(std::int32_t row, std::int32_t col) const;
  css::uno::Any ValueOf(const Cell& cell) const;

  void Click(const css::awt::MouseEvent& event);
  void TakePressedKey(const css::awt::KeyEvent& event);
  void FollowCursor();
  void TakeWidths();
  void Act(const std::function<void()>& act);

  forms::Grid& grid_;
  View& view_;
  Views& views_;
  const std::vector<std::int32_t> usual_widths_;
  css::uno::Reference<css::awt::grid::XGridColumnModel> columns_;
  css::uno::Reference<css::awt::grid::XMutableGridDataModel> cells_;
  std::vector<Column> shown_columns_;
  std::vector<std::vector<Cell>> shown_cells_;
  bool out_of_date_ = false;
  bool showing_ = false;
};

}  // namespace mirelo::calc
