#pragma once

#include <memory>
#include <utility>

#include "adapters/workbook/model/book.h"
#include "adapters/workbook/objects/workbook_object.h"
#include "host/excel/application.h"

namespace mirelo::workbook {

class ApplicationObject final : public host::excel::Application {
 public:
  explicit ApplicationObject(std::shared_ptr<Book> book) : book_(std::move(book)) {}

  std::shared_ptr<host::excel::Workbook> ActiveWorkbook() override {
    return std::make_shared<WorkbookObject>(book_);
  }
  // Nothing is shown here, so the switch is only kept.
  bool ScreenUpdating() override { return screen_updating_; }
  void ScreenUpdating(bool on) override { screen_updating_ = on; }

 private:
  std::shared_ptr<Book> book_;
  bool screen_updating_ = true;
};

}  // namespace mirelo::workbook
