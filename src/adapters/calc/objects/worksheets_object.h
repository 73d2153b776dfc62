#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

#include "adapters/calc/objects/document.h"
#include "host/excel/worksheets.h"

namespace mirelo::calc {

class WorksheetsObject final : public host::excel::Worksheets {
 public:
  explicit WorksheetsObject(std::shared_ptr<Document> document) : document_(std::move(document)) {}

  std::int32_t Count() override;
  std::shared_ptr<host::excel::Worksheet> Item(std::int32_t index) override;
  std::shared_ptr<host::excel::Worksheet> Item(std::string_view name) override;
  std::shared_ptr<host::excel::Worksheet> Add() override;

 private:
  std::shared_ptr<Document> document_;
};

}  // namespace mirelo::calc
