#include "adapters/workbook/spreadsheet.h"

#include <utility>

#include "adapters/workbook/atomic_file.h"
#include "adapters/workbook/file_stamp.h"
#include "adapters/workbook/load_limits.h"
#include "adapters/workbook/model/book.h"
#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/checked_writer.h"
#include "adapters/workbook/xlsx/origin.h"
#include "adapters/workbook/xlsx/workbook_reader.h"
#include "automation/regional_format.h"
#include "automation/text.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

namespace {

std::vector<std::string> SentencesOf(const std::vector<Loss>& losses) {
  std::vector<std::string> sentences;
  sentences.reserve(losses.size());
  for (const Loss& loss : losses) sentences.push_back(loss.text);
  return sentences;
}

std::set<std::string> SetOf(const std::vector<std::string>& list) { return {list.begin(), list.end()}; }

}  // namespace

Spreadsheet Spreadsheet::Open(const std::filesystem::path& file) {
  return Open(file, RegionalFormat::Standard());
}

Spreadsheet Spreadsheet::Open(const std::filesystem::path& file, const RegionalFormat& regional) {
  return Open(file, regional, LoadLimits());
}

Spreadsheet Spreadsheet::Open(const std::filesystem::path& file, const RegionalFormat& regional,
                              const LoadLimits& limits) {
  try {
    std::vector<char> bytes = ReadWholeFile(file, limits.file_bytes);
    LoadedBook loaded = ReadWorkbook(bytes, limits);
    loaded.book->name = file.filename().string();
    loaded.book->regional = regional;
    std::shared_ptr<Origin> origin;
    if (!loaded.losses.empty()) origin = std::make_shared<Origin>(std::move(bytes), limits, loaded);
    return Spreadsheet(std::move(loaded.book), std::move(origin));
  } catch (const RuntimeError& error) {
    if (error.Number() != host::excel::kApplicationError) throw;
    throw Refused("Cannot open " + file.string() + ": " + error.Description());
  }
}

std::optional<Spreadsheet::Kept> Spreadsheet::KeptSheets() const {
  return origin_ == nullptr ? std::nullopt : origin_->KeptSheets(*book_);
}

std::vector<std::string> Spreadsheet::Losses() const { return Losses(KeptSheets()); }

std::vector<std::string> Spreadsheet::Losses(const std::optional<Kept>& kept) const {
  if (origin_ == nullptr) return {};
  std::vector<std::string> losses = SentencesOf(origin_->Losses(kept));
  std::erase_if(losses, [&](const std::string& loss) { return notes_.suffered.contains(loss); });
  return losses;
}

std::vector<std::string> Spreadsheet::WorkLostByChange(const std::string& sheet) const {
  std::optional<Kept> kept = KeptSheets();
  if (!kept) return {};
  const std::set<std::string> before = SetOf(Losses(kept));
  std::erase_if(*kept, [&](const Sheet* each) { return EqualText(each->name, sheet); });
  std::vector<Loss> losses = origin_->Losses(kept);
  std::erase_if(losses, [&](const Loss& loss) {
    return !loss.is_work || before.contains(loss.text) || notes_.suffered.contains(loss.text);
  });
  return SentencesOf(losses);
}

std::vector<std::string> Spreadsheet::NewLosses() { return NewLosses(KeptSheets()); }

std::vector<std::string> Spreadsheet::NewLosses(const std::optional<Kept>& kept) {
  std::vector<std::string> losses = Losses(kept);
  std::erase_if(losses, [&](const std::string& loss) { return !notes_.told.insert(loss).second; });
  return losses;
}

void Spreadsheet::Save(const std::filesystem::path& file, const Tell& tell) {
  Save(file, tell, std::nullopt);
}

FileStamp Spreadsheet::Save(const std::filesystem::path& file, const Tell& tell,
                            const std::optional<FileStamp>& known, const Placing& placing) {
  const std::optional<Kept> kept = KeptSheets();
  for (const std::string& loss : NewLosses(kept)) tell(loss);
  const auto tell_problem = [&](const std::string& problem) {
    tell("Workbook: " + problem);
    for (const std::string& loss : NewLosses(std::nullopt)) tell(loss);
  };
  return Save(file, kept, tell_problem, known, placing);
}

void Spreadsheet::Save(const std::filesystem::path& file) {
  const auto refuse = [&](const std::string& problem) {
    throw Refused("Cannot save " + file.string() + ": " + problem);
  };
  Save(file, KeptSheets(), refuse, std::nullopt, {});
}

FileStamp Spreadsheet::Save(const std::filesystem::path& file, std::optional<Kept> kept,
                            const Tell& tell_problem, const std::optional<FileStamp>& known,
                            const Placing& placing) {
  // Once the file is replaced nothing may fail any more: it would pass for not saved.
  std::string name = file.filename().string();
  std::set<std::string> lost;
  const auto write = [&](const std::filesystem::path& fresh) {
    Write(fresh, kept, tell_problem);
    if (origin_ != nullptr) lost = SetOf(SentencesOf(origin_->Losses(kept)));
  };
  const FileStamp saved = ReplaceFile(file, write, known, placing);
  book_->name = std::move(name);
  notes_.suffered.merge(lost);
  return saved;
}

void Spreadsheet::Write(const std::filesystem::path& fresh, std::optional<Kept>& kept,
                        const Tell& tell_problem) {
  if (kept) {
    const std::string problem = WriteCheckedCarrying(*book_, *origin_, *kept, fresh);
    if (problem.empty()) return;
    KeepNoSheet();
    kept.reset();
    tell_problem("its sheets cannot stay as they stand in the file (" + problem +
                 "), so all must be written anew.");
  }
  WriteChecked(*book_, fresh);
}

void Spreadsheet::KeepNoSheet() {
  if (origin_ != nullptr) origin_->GiveUp();
  notes_.keeps_no_sheet = true;
}

void Spreadsheet::TakeOver(const LossNotes& notes) {
  notes_.told.insert(notes.told.begin(), notes.told.end());
  notes_.suffered.insert(notes.suffered.begin(), notes.suffered.end());
  if (notes.keeps_no_sheet) KeepNoSheet();
}

void Spreadsheet::WasSavedIn(const std::filesystem::path& file) { book_->name = file.filename().string(); }

void Spreadsheet::RequireSavable(const std::filesystem::path& file) { RequireReplaceable(file); }

}  // namespace mirelo::workbook
