#include "adapters/workbook/spreadsheet.h"

#include <optional>
#include <utility>

#include "adapters/workbook/atomic_file.h"
#include "adapters/workbook/errors.h"
#include "adapters/workbook/model/book.h"
#include "adapters/workbook/objects/application_object.h"
#include "adapters/workbook/xlsx/carrying_writer.h"
#include "adapters/workbook/xlsx/origin.h"
#include "adapters/workbook/xlsx/saved_check.h"
#include "adapters/workbook/xlsx/workbook_reader.h"
#include "adapters/workbook/xlsx/workbook_writer.h"

namespace mirelo::workbook {

namespace {

std::set<std::string> SetOf(const std::vector<std::string>& list) { return {list.begin(), list.end()}; }

}  // namespace

Spreadsheet Spreadsheet::New(const RegionalFormat& regional) {
  auto book = Book::New();
  book->regional = regional;
  return Spreadsheet(std::move(book));
}

Spreadsheet Spreadsheet::Open(const std::filesystem::path& file, const RegionalFormat& regional,
                              const LoadLimits& limits) {
  try {
    std::vector<char> bytes = ReadWholeFile(file, limits.file_bytes);
    LoadedBook loaded = ReadWorkbook(bytes, limits);
    loaded.book->name = file.filename().string();
    loaded.book->regional = regional;
    std::shared_ptr<const Origin> origin;
    if (!loaded.losses.empty()) origin = std::make_shared<Origin>(std::move(bytes), limits, loaded);
    return Spreadsheet(std::move(loaded.book), std::move(origin));
  } catch (const RuntimeError& error) {
    if (error.Number() != host::excel::kApplicationError) throw;
    throw Refused("Cannot open " + file.string() + ": " + error.Description());
  }
}

Spreadsheet::Spreadsheet(std::shared_ptr<Book> book, std::shared_ptr<const Origin> origin)
    : book_(std::move(book)),
      application_(std::make_shared<ApplicationObject>(book_)),
      origin_(std::move(origin)) {}

std::vector<std::string> Spreadsheet::Losses() const {
  if (origin_ == nullptr) return {};
  std::vector<std::string> losses = origin_->Losses(origin_->KeptSheets(*book_));
  std::erase_if(losses, [&](const std::string& loss) { return suffered_.contains(loss); });
  return losses;
}

std::vector<std::string> Spreadsheet::NewLosses() {
  std::vector<std::string> losses = Losses();
  std::erase_if(losses, [&](const std::string& loss) { return !told_.insert(loss).second; });
  return losses;
}

void Spreadsheet::Save(const std::filesystem::path& file) {
  const auto kept = origin_ == nullptr ? std::nullopt : origin_->KeptSheets(*book_);
  ReplaceFile(file, [&](const std::filesystem::path& fresh) {
    if (kept) {
      Carry(*kept, fresh);
      CheckSaved(*book_, *kept, fresh);
    } else {
      WriteWorkbook(*book_, fresh);
      CheckSaved(*book_, fresh);
    }
  });
  book_->name = file.filename().string();
  if (origin_ != nullptr) suffered_.merge(SetOf(origin_->Losses(kept)));
}

// Where the file is damaged in a way that comes to light only now, the next attempt does without it, and what
// is lost then can be told before.
void Spreadsheet::Carry(const std::set<const Sheet*>& kept, const std::filesystem::path& fresh) {
  try {
    WriteCarrying(*book_, *origin_, kept, fresh);
  } catch (const RuntimeError& error) {
    if (error.Number() == host::excel::kApplicationError) {
      auto unfit = std::make_shared<Origin>(*origin_);
      unfit->GiveUp();
      origin_ = std::move(unfit);
    }
    throw;
  }
}

void Spreadsheet::RequireSavable(const std::filesystem::path& file) { RequireReplaceable(file); }

}  // namespace mirelo::workbook
