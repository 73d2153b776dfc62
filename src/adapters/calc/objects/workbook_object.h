#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/calc/objects/document.h"
#include "host/excel/workbook.h"

namespace mirelo::calc {

class WorkbookObject final : public host::excel::Workbook {
 public:
  explicit WorkbookObject(std::shared_ptr<Document> document) : document_(std::move(document)) {}

  std::string Name() override;
  std::shared_ptr<host::excel::Worksheets> Worksheets() override;
  std::shared_ptr<host::excel::Charts> Charts() override;
  std::shared_ptr<host::excel::Sheet> Sheets(std::string_view name) override;
  std::shared_ptr<host::excel::Sheet> ActiveSheet() override;

 private:
  std::shared_ptr<Document> document_;
};

}  // namespace mirelo::calc
