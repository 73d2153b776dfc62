#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/calc/objects/cell_block.h"
#include "host/excel/range.h"

namespace mirelo::calc {

class RangeObject final : public host::excel::Range {
 public:
  using RangePtr = std::shared_ptr<host::excel::Range>;
  enum class View { Cells, Rows, Columns };

  RangeObject(CellBlock block, View view) : block_(std::move(block)), view_(view) {}

  const CellBlock& block() const { return block_; }

  Variant Value() override;
  void Value(const Variant& value) override;
  std::string Text() override;

  RangePtr Cells() override;
  RangePtr Cells(std::int32_t row, std::int32_t column) override;
  RangePtr Item(std::int32_t row, std::int32_t column) override;
  RangePtr Item(std::int32_t index) override;
  RangePtr Resize(std::int32_t rows, std::int32_t columns) override;

  std::int32_t Row() override { return block_.area.first_row; }
  std::int32_t Column() override { return block_.area.first_column; }
  RangePtr Rows() override;
  RangePtr Columns() override;
  std::int32_t Count() override;

  using Range::Address;
  std::string Address(bool row_absolute, bool column_absolute) override;
  std::shared_ptr<host::excel::Worksheet> Worksheet() override;

  RangePtr End(host::excel::XlDirection direction) override;
  RangePtr SpecialCells(host::excel::XlCellType type) override;
  RangePtr Find(std::string_view what, Range& after, host::excel::XlSearchOrder order,
                host::excel::XlSearchDirection direction) override;
  void Select() override;
  double Left() override;
  double Top() override;
  double Width() override;
  double Height() override;
  RangePtr EntireColumn() override;
  RangePtr EntireRow() override;
  Variant ColumnWidth() override;
  void ColumnWidth(double digits) override;
  void AutoFit() override;

  void Clear() override;
  void ClearContents() override;
  void Delete(host::excel::XlDeleteShiftDirection shift) override;

  std::shared_ptr<host::excel::Comment> Comment() override;
  std::shared_ptr<host::excel::Comment> AddComment(std::string_view text) override;
  void ClearComments() override;

  Variant NumberFormat() override;
  void NumberFormat(std::string_view format) override;
  Variant HorizontalAlignment() override;
  void HorizontalAlignment(std::int32_t alignment) override;

  std::shared_ptr<host::excel::Font> Font() override;
  std::shared_ptr<host::excel::Interior> Interior() override;
  std::shared_ptr<host::excel::Border> Borders(host::excel::XlBordersIndex index) override;
  std::shared_ptr<host::excel::FormatConditions> FormatConditions() override;
  std::shared_ptr<host::excel::DisplayFormat> DisplayFormat() override;

 private:
  template <class Body>
  decltype(auto) Ask(Body&& body) const;
  // Runs what changes the cells, which the person's undo list is not told of. Error 1004 where they may not
  // be changed.
  template <class Body>
  void Change(Body&& body) const;

  // Another range of the same sheet.
  RangePtr At(const spreadsheet::Area& area, View view = View::Cells) const;

  CellBlock block_;
  View view_;
};

std::shared_ptr<host::excel::Range> RangeOf(CellBlock block,
                                            RangeObject::View view = RangeObject::View::Cells);

}  // namespace mirelo::calc
