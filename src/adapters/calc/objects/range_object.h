#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/calc/objects/cell_block.h"
#include "spreadsheet/placed_range.h"

namespace mirelo::calc {

class RangeObject final : public spreadsheet::PlacedRange {
 public:
  RangeObject(CellBlock block, View view) : PlacedRange(view), block_(std::move(block)) {}

  const CellBlock& block() const { return block_; }

  Variant Value() override;
  void Value(const Variant& value) override;
  std::string Text() override;

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

  using PlacedRange::At;
  RangePtr At(const spreadsheet::Area& other, View view) const override;
  const spreadsheet::Area& area() const override { return block_.area; }

  CellBlock block_;
};

std::shared_ptr<host::excel::Range> RangeOf(CellBlock block,
                                            RangeObject::View view = RangeObject::View::Cells);

}  // namespace mirelo::calc
