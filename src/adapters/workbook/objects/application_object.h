#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "adapters/workbook/model/book.h"
#include "adapters/workbook/objects/workbook_object.h"
#include "adapters/workbook/objects/worksheet_object.h"
#include "adapters/workbook/objects/worksheets_object.h"
#include "host/excel/application.h"

namespace mirelo::workbook {

class ApplicationObject final : public host::excel::Application {
 public:
  explicit ApplicationObject(std::shared_ptr<Book> book) : book_(std::move(book)) {}

  std::shared_ptr<host::excel::Workbook> ActiveWorkbook() override {
    return std::make_shared<WorkbookObject>(book_);
  }
  std::shared_ptr<host::excel::Sheet> ActiveSheet() override { return FrontSheet(); }
  std::shared_ptr<host::excel::Range> ActiveCell() override {
    const CellPlace& cell = book_->sheets[book_->active]->active_cell;
    return FrontSheet()->Cells(cell.row, cell.column);
  }
  std::shared_ptr<host::excel::Worksheets> Worksheets() override {
    return std::make_shared<WorksheetsObject>(book_);
  }
  std::shared_ptr<host::excel::Range> Range(std::string_view address) override {
    return FrontSheet()->Range(address);
  }
  std::shared_ptr<host::excel::Range> Cells() override { return FrontSheet()->Cells(); }
  std::shared_ptr<host::excel::Range> Cells(std::int32_t row, std::int32_t column) override {
    return FrontSheet()->Cells(row, column);
  }
  // Nothing is shown here, so the switch is only kept.
  bool ScreenUpdating() override { return screen_updating_; }
  void ScreenUpdating(bool on) override { screen_updating_ = on; }

 private:
  std::shared_ptr<WorksheetObject> FrontSheet() const {
    return std::make_shared<WorksheetObject>(book_, book_->sheets[book_->active]);
  }

  std::shared_ptr<Book> book_;
  bool screen_updating_ = true;
};

}  // namespace mirelo::workbook
