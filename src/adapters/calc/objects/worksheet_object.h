#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/calc/objects/document_sheet.h"
#include "adapters/calc/objects/range_object.h"
#include "host/excel/worksheet.h"

namespace mirelo::calc {

class WorksheetObject final : public host::excel::Worksheet {
 public:
  using RangePtr = std::shared_ptr<host::excel::Range>;

  explicit WorksheetObject(std::shared_ptr<DocumentSheet> sheet) : sheet_(std::move(sheet)) {}

  const std::shared_ptr<DocumentSheet>& sheet() const { return sheet_; }

  std::string Name() override;
  void Name(std::string_view name) override;
  std::int32_t Index() override;
  void Select() override;
  void Activate() override { Select(); }

  RangePtr Range(std::string_view address) override;
  RangePtr Range(std::string_view first, std::string_view last) override;
  RangePtr Range(host::excel::Range& first, host::excel::Range& last) override;
  RangePtr Cells() override;
  RangePtr Cells(std::int32_t row, std::int32_t column) override;
  std::shared_ptr<host::excel::Shapes> Shapes() override;
  RangePtr Rows() override;
  RangePtr Columns() override;
  RangePtr Rows(std::string_view rows) override;
  RangePtr Columns(std::string_view columns) override;

 private:
  RangePtr At(const spreadsheet::Area& area, RangeObject::View view = RangeObject::View::Cells) const;

  std::shared_ptr<DocumentSheet> sheet_;
};

}  // namespace mirelo::calc
