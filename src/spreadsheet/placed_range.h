#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/excel/range.h"
#include "spreadsheet/area.h"

namespace mirelo::spreadsheet {

// What a range of cells has of its place on the sheet alone, whatever keeps the cells: its size and address,
// and the ranges that are found from it by counting.
class PlacedRange : public host::excel::Range {
 public:
  using RangePtr = std::shared_ptr<host::excel::Range>;
  // What Item and Count count.
  enum class View { Cells, Rows, Columns };

  RangePtr Cells() override;
  RangePtr Cells(std::int32_t row, std::int32_t column) override;
  RangePtr Item(std::int32_t row, std::int32_t column) override;
  RangePtr Item(std::int32_t index) override;
  RangePtr Resize(std::int32_t rows, std::int32_t columns) override;

  std::int32_t Row() override { return area().first_row; }
  std::int32_t Column() override { return area().first_column; }
  RangePtr Rows() override;
  RangePtr Columns() override;
  std::int32_t Count() override;

  using Range::Address;
  std::string Address(bool row_absolute, bool column_absolute) override;
  RangePtr EntireColumn() override;
  RangePtr EntireRow() override;

 protected:
  explicit PlacedRange(View view) : view_(view) {}

  virtual const Area& area() const = 0;
  // Another range of the same sheet.
  virtual RangePtr At(const Area& other, View view) const = 0;
  RangePtr At(const Area& other) const { return At(other, View::Cells); }

  // Error 1004 for what cannot be asked of this range.
  void CheckIsForColumns() const;
  void CheckDeletes(host::excel::XlDeleteShiftDirection shift) const;
  void CheckHoldsComment() const;

 private:
  const View view_;
};

}  // namespace mirelo::spreadsheet
