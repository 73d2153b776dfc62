#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "adapters/workbook/model/book.h"
#include "host/excel/shapes.h"

namespace mirelo::workbook {

class ShapesObject final : public host::excel::Shapes {
 public:
  ShapesObject(std::shared_ptr<Book> book, std::shared_ptr<Sheet> sheet)
      : book_(std::move(book)), sheet_(std::move(sheet)) {}

  std::int32_t Count() override;
  std::shared_ptr<host::excel::Shape> Item(std::int32_t index) override;
  std::shared_ptr<host::excel::Shape> Item(std::string_view name) override;

 private:
  std::shared_ptr<Book> book_;
  std::shared_ptr<Sheet> sheet_;
};

// What is selected on the sheet instead of cells; null when nothing is.
std::shared_ptr<host::excel::Shape> SelectedShape(const std::shared_ptr<Book>& book,
                                                  const std::shared_ptr<Sheet>& sheet);

}  // namespace mirelo::workbook
