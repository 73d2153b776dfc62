#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "adapters/workbook/model/book.h"
#include "adapters/workbook/objects/worksheet_object.h"
#include "host/excel/application.h"

namespace mirelo::workbook {

class ApplicationObject final : public host::excel::Application {
 public:
  explicit ApplicationObject(std::shared_ptr<Book> book) : book_(std::move(book)) {}

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
  // Nothing is shown here, so the switch is only kept.
  bool ScreenUpdating() override { return screen_updating_; }
  void ScreenUpdating(bool on) override { screen_updating_ = on; }

 private:
  // Error 1004 while a chart sheet is in front.
  std::shared_ptr<WorksheetObject> FrontWorksheet() const;

  std::shared_ptr<Book> book_;
  bool screen_updating_ = true;
};

}  // namespace mirelo::workbook
