#pragma once

#include <filesystem>
#include <memory>

#include "host/documents.h"

namespace mirelo::workbook {

// Documents that are .xlsx files, and the spreadsheet program in memory that shows them.
class Files : public host::Documents {
 public:
  std::unique_ptr<host::Document> New() override;
  std::unique_ptr<host::Document> Open(const std::filesystem::path& file) override;
  std::unique_ptr<host::DocumentHold> Hold(const std::filesystem::path& file) override;
  void RequireSavable(const std::filesystem::path& file) override;
};

}  // namespace mirelo::workbook
