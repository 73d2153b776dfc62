#pragma once

#include <QAbstractTableModel>
#include <string>

#include "forms/grid.h"

namespace mirelo::qt {

class QtLoop;

// A grid of the forms as a table of Qt's: without the header row and the fixed columns, which are the table's
// headers. Of several fixed columns the first is the row's header and the others are not shown.
class GridModel final : public QAbstractTableModel {
 public:
  GridModel(forms::Grid& grid, QtLoop& loop) : grid_(grid), loop_(loop) {}

  // Tells Qt that everything may have changed.
  void Refresh();

  // Convert between rows and columns of the grid and of the table. Both may be asked for places that are not
  // there.
  int TableRow(std::int32_t row) const { return row - grid_.FixedRows(); }
  int TableColumn(std::int32_t col) const { return col - grid_.FixedCols(); }
  std::int32_t GridRow(int row) const { return row + grid_.FixedRows(); }
  std::int32_t GridColumn(int column) const { return column + grid_.FixedCols(); }

  bool IsCheckColumn(int column) const;
  // Whether a check cell is ticked; and the picture of a cell, by its name.
  bool IsTicked(const QModelIndex& cell) const;
  const std::string& PictureOf(const QModelIndex& cell) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& cell, int role) const override;
  bool setData(const QModelIndex& cell, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& cell) const override;

 private:
  bool Exists(const QModelIndex& cell) const;
  const std::string& TextOf(const QModelIndex& cell) const;

  forms::Grid& grid_;
  QtLoop& loop_;
  // What Qt has been told of.
  int rows_ = 0;
  int columns_ = 0;
};

}  // namespace mirelo::qt
