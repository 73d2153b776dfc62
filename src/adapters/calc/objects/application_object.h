#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "adapters/calc/objects/document.h"
#include "host/excel/application.h"
#include "host/excel/worksheet.h"

namespace mirelo::calc {

class ApplicationObject final : public host::excel::Application {
 public:
  explicit ApplicationObject(std::shared_ptr<Document> document) : document_(std::move(document)) {}

  std::shared_ptr<host::excel::Workbook> ActiveWorkbook() override;
  std::shared_ptr<host::excel::Sheet> ActiveSheet() override;
  std::shared_ptr<host::excel::Range> ActiveCell() override;
  std::shared_ptr<host::excel::Selectable> Selection() override;
  std::shared_ptr<host::excel::Window> ActiveWindow() override;
  std::shared_ptr<host::excel::Worksheets> Worksheets() override;
  std::shared_ptr<host::excel::Charts> Charts() override;
  std::shared_ptr<host::excel::Range> Range(std::string_view address) override;
  std::shared_ptr<host::excel::Range> Cells() override;
  std::shared_ptr<host::excel::Range> Cells(std::int32_t row, std::int32_t column) override;
  bool ScreenUpdating() override;
  void ScreenUpdating(bool on) override;

 private:
  void ShowAgain();
  // Error 1004 while a chart sheet is in front.
  std::shared_ptr<host::excel::Worksheet> FrontWorksheet() const;

  std::shared_ptr<Document> document_;
};

}  // namespace mirelo::calc
