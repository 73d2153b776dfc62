#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/poll/poll_loop.h"
#include "adapters/workbook/files.h"
#include "adapters/workbook/spreadsheet.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "host/documents.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "support/error_number.h"
#include "workbook/package_builder.h"
#include "workbook/workbook_files.h"

namespace mirelo::testing {

// A document that is saved beside the test, which runs the loop.
class SavingBeside : public WorkbookFiles {
 protected:
  void Write(const Variant& value, const char* cell = "A1") const {
    document->Application()->Range(cell)->Value(value);
  }
  // Some 100 KB in the file: a save of it takes its time.
  void WriteMuch() const {
    constexpr std::int32_t kRowsOfMuch = 4000;
    VariantArray table(1, kRowsOfMuch, 1, 8);
    for (std::int32_t row = 1; row <= kRowsOfMuch; ++row) {
      for (std::int32_t column = 1; column <= 8; ++column) table(row, column) = Variant(row * 1.37 / column);
    }
    document->Application()->Range("A10")->Resize(kRowsOfMuch, 8)->Value(table);
  }
  // From now on the document is one that loses something when it is saved: two cells that were merged. The
  // save waits until that was told, for as long as the test does not run the loop.
  void TakeOneWithALoss() {
    Parts parts = SmallWorkbook("<row r=\"1\"><c r=\"A1\"><v>1</v></c></row>");
    InsertBehind(parts[kSheetPart], "</sheetData>", "<mergeCells><mergeCell ref=\"C1:D1\"/></mergeCells>");
    Open(parts);
  }

  void Begin(const std::filesystem::path& file) {
    ended = false;
    failure = nullptr;
    saving = document->SaveBeside(
        loop, file,
        [this](const std::string& sentence) {
          told.push_back(sentence);
          if (when_told) when_told();
        },
        [this](const std::exception_ptr& error) {
          failure = error;
          ended = true;
          saving.reset();
        });
    ASSERT_NE(saving, nullptr);
  }
  void Begin() { Begin(File()); }
  void Finish() {
    loop.RunUntil([this] { return ended; });
  }
  void FinishWell() {
    Finish();
    if (failure) std::rethrow_exception(failure);
  }
  // Waits for the end, which must be a failure.
  RuntimeError Failure() {
    Finish();
    return ErrorOf([this] {
      if (failure) std::rethrow_exception(failure);
    });
  }
  Variant Saved(const char* name = "quotes.xlsx", const char* cell = "A1") const {
    return SheetOf(workbook::Spreadsheet::Open(File(name)))->Range(cell)->Value();
  }

  poll::PollLoop loop;
  workbook::Files files;
  std::unique_ptr<host::Document> document = files.New();
  std::unique_ptr<host::Saving> saving;
  std::vector<std::string> told;
  std::function<void()> when_told;
  bool ended = false;
  std::exception_ptr failure;
};

}  // namespace mirelo::testing
