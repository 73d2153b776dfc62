#pragma once

#include <memory>
#include <utility>

#include "adapters/workbook/model/book.h"
#include "host/excel/window.h"

namespace mirelo::workbook {

class WindowObject final : public host::excel::Window {
 public:
  explicit WindowObject(std::shared_ptr<Book> book) : book_(std::move(book)) {}

  std::shared_ptr<host::excel::Range> VisibleRange() override;

 private:
  std::shared_ptr<Book> book_;
};

}  // namespace mirelo::workbook
