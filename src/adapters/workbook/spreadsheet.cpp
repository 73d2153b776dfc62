#include "adapters/workbook/spreadsheet.h"

#include <utility>

#include "adapters/workbook/atomic_file.h"
#include "adapters/workbook/errors.h"
#include "adapters/workbook/model/book.h"
#include "adapters/workbook/objects/application_object.h"
#include "adapters/workbook/xlsx/saved_check.h"
#include "adapters/workbook/xlsx/workbook_reader.h"
#include "adapters/workbook/xlsx/workbook_writer.h"

namespace mirelo::workbook {

Spreadsheet Spreadsheet::New(const RegionalFormat& regional) {
  auto book = Book::New();
  book->regional = regional;
  return Spreadsheet(std::move(book));
}

Spreadsheet Spreadsheet::Open(const std::filesystem::path& file, const RegionalFormat& regional,
                              const LoadLimits& limits) {
  try {
    const std::vector<char> bytes = ReadWholeFile(file, limits.file_bytes);
    LoadedBook loaded = ReadWorkbook(bytes, limits);
    loaded.book->name = file.filename().string();
    loaded.book->regional = regional;
    return Spreadsheet(std::move(loaded.book), std::move(loaded.losses));
  } catch (const RuntimeError& error) {
    if (error.Number() != host::excel::kApplicationError) throw;
    throw Refused("Cannot open " + file.string() + ": " + error.Description());
  }
}

Spreadsheet::Spreadsheet(std::shared_ptr<Book> book, std::vector<std::string> losses)
    : book_(std::move(book)),
      application_(std::make_shared<ApplicationObject>(book_)),
      losses_(std::move(losses)) {}

void Spreadsheet::Save(const std::filesystem::path& file) {
  ReplaceFile(file, [&](const std::filesystem::path& fresh) {
    WriteWorkbook(*book_, fresh);
    CheckSaved(*book_, fresh);
  });
  book_->name = file.filename().string();
  losses_.clear();
}

void Spreadsheet::RequireSavable(const std::filesystem::path& file) { RequireReplaceable(file); }

}  // namespace mirelo::workbook
