#include "app/workbook_file.h"

#include <iostream>
#include <string>

#include "automation/runtime_error.h"

namespace mirelo::app {

namespace {

constexpr std::int32_t kDiskFull = 61;
constexpr const char* kMakeRoom = "Make room on the disk, or name another file with --workbook.";
constexpr const char* kMakeWritable =
    "Make the file and its folder writable, or name another file with --workbook.";

// Does what may fail to save; the error's text then says what to do as well.
template <class Attempt>
void SayingWhatToDo(Attempt&& attempt) {
  try {
    attempt();
  } catch (const RuntimeError& error) {
    const char* advice = nullptr;
    if (error.Number() == kDiskFull) advice = kMakeRoom;
    if (error.Number() == Errors::PathFileAccess().Number()) advice = kMakeWritable;
    if (advice == nullptr) throw;
    throw RuntimeError(error.Number(), error.Description() + ".\n" + advice, error.Source());
  }
}

}  // namespace

workbook::Spreadsheet OpenOrNew(const std::filesystem::path& file) {
  if (!std::filesystem::exists(file)) return workbook::Spreadsheet::New();
  auto spreadsheet = workbook::Spreadsheet::Open(file);
  TellLosses(file, spreadsheet);
  return spreadsheet;
}

void TellLosses(const std::filesystem::path& file, workbook::Spreadsheet& spreadsheet) {
  for (const auto& loss : spreadsheet.NewLosses()) TellLoss(file, loss);
}

void TellLoss(const std::filesystem::path& file, const std::string& loss) {
  std::cerr << "warning: " << file.string() << ": " << loss << '\n';
}

workbook::Spreadsheet OpenForGo(const std::filesystem::path& file) {
  SayingWhatToDo([&] { workbook::Spreadsheet::RequireSavable(file); });
  return OpenOrNew(file);
}

void SaveAfterGo(const std::filesystem::path& file, workbook::Spreadsheet& spreadsheet) {
  try {
    SayingWhatToDo([&] { spreadsheet.Save(file, [&](const std::string& loss) { TellLoss(file, loss); }); });
  } catch (const RuntimeError&) {
    std::cerr << "The settings are stored, but the workbook is as it was.\n";
    throw;
  }
  std::cerr << "Saved in " << std::filesystem::absolute(file).string() << '\n';
}

}  // namespace mirelo::app
