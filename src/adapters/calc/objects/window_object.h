#pragma once

#include <memory>
#include <utility>

#include "adapters/calc/objects/document.h"
#include "host/excel/window.h"

namespace mirelo::calc {

class WindowObject final : public host::excel::Window {
 public:
  explicit WindowObject(std::shared_ptr<Document> document) : document_(std::move(document)) {}

  std::shared_ptr<host::excel::Range> VisibleRange() override;

 private:
  std::shared_ptr<Document> document_;
};

}  // namespace mirelo::calc
