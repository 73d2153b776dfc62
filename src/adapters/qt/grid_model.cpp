#include "adapters/qt/grid_model.h"

#include <QIcon>

#include "adapters/qt/pictures.h"
#include "adapters/qt/qt_loop.h"
#include "adapters/qt/text.h"

namespace mirelo::qt {

void GridModel::Refresh() {
  const int rows = grid_.Rows() - grid_.FixedRows();
  const int columns = grid_.Cols() - grid_.FixedCols();
  if (columns != columns_) {
    beginResetModel();
    rows_ = rows;
    columns_ = columns;
    endResetModel();
  } else if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
  } else if (rows < rows_) {
    beginRemoveRows({}, rows, rows_ - 1);
    rows_ = rows;
    endRemoveRows();
  }
  if (columns_ > 0) Q_EMIT headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
  if (rows_ > 0) Q_EMIT headerDataChanged(Qt::Vertical, 0, rows_ - 1);
  if (rows_ > 0 && columns_ > 0) Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));
}

bool GridModel::IsCheckColumn(int column) const {
  const std::int32_t col = GridColumn(column);
  return col < grid_.Cols() && grid_.ColDataType(col) == forms::Grid::kBooleanColumn;
}

bool GridModel::IsTicked(const QModelIndex& cell) const {
  const std::string& text = TextOf(cell);
  return !text.empty() && text != "0";
}

const std::string& GridModel::PictureOf(const QModelIndex& cell) const {
  static const std::string none;
  return Exists(cell) ? grid_.Picture(GridRow(cell.row()), GridColumn(cell.column())) : none;
}

int GridModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int GridModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : columns_; }

QVariant GridModel::data(const QModelIndex& cell, int role) const {
  if (!Exists(cell)) return {};
  const bool check = IsCheckColumn(cell.column());
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return check ? QVariant() : QVariant(Shown(TextOf(cell)));
    case Qt::CheckStateRole:
      return check ? QVariant(IsTicked(cell) ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::DecorationRole:
      return check || PictureOf(cell).empty() ? QVariant() : QVariant(Picture(PictureOf(cell)));
    case Qt::AccessibleTextRole:
      return headerData(cell.column(), Qt::Horizontal, Qt::DisplayRole);
    default:
      return {};
  }
}

bool GridModel::setData(const QModelIndex& cell, const QVariant& value, int role) {
  if (!Exists(cell)) return false;
  loop_.Guard([&] {
    grid_.UserMoveTo(GridRow(cell.row()), GridColumn(cell.column()));
    if (role == Qt::EditRole) grid_.UserEditCell(Typed(value.toString()));
    if (role == Qt::CheckStateRole) grid_.UserToggle();
  });
  return true;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  const bool top = orientation == Qt::Horizontal;
  const std::int32_t row = top ? 0 : GridRow(section);
  const std::int32_t col = top ? GridColumn(section) : 0;
  const bool there =
      row < grid_.Rows() && col < grid_.Cols() && (top ? grid_.FixedRows() : grid_.FixedCols()) > 0;
  return there ? QVariant(Shown(grid_.TextMatrix(row, col))) : QVariant();
}

Qt::ItemFlags GridModel::flags(const QModelIndex& cell) const {
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (!Exists(cell) || grid_.Editable() == 0) return flags;
  return flags | (IsCheckColumn(cell.column()) ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

// The grid may have shrunk since Qt was told of its size.
bool GridModel::Exists(const QModelIndex& cell) const {
  return cell.isValid() && GridRow(cell.row()) < grid_.Rows() && GridColumn(cell.column()) < grid_.Cols();
}

const std::string& GridModel::TextOf(const QModelIndex& cell) const {
  static const std::string none;
  return Exists(cell) ? grid_.TextMatrix(GridRow(cell.row()), GridColumn(cell.column())) : none;
}

}  // namespace mirelo::qt
