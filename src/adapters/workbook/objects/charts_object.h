#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "adapters/workbook/model/book.h"
#include "host/excel/charts.h"

namespace mirelo::workbook {

class ChartsObject final : public host::excel::Charts {
 public:
  explicit ChartsObject(std::shared_ptr<Book> book) : book_(std::move(book)) {}

  std::int32_t Count() override;
  std::shared_ptr<host::excel::Chart> Item(std::int32_t index) override;
  std::shared_ptr<host::excel::Chart> Item(std::string_view name) override;
  std::shared_ptr<host::excel::Chart> Add() override;

 private:
  std::shared_ptr<Book> book_;
};

}  // namespace mirelo::workbook
