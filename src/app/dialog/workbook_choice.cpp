#include "app/dialog/workbook_choice.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <vector>

#include "app/workbook/spreadsheet_program.h"
#include "automation/text.h"

namespace mirelo::app {

namespace fs = std::filesystem;

namespace {

using Mood = Screen::Mood;

constexpr const char* kProposedName = "quotes.xlsx";
constexpr const char* kNew = "New Workbook...";
constexpr const char* kOpen = "Open Workbook...";
constexpr const char* kAgain = "Try Again";

// Whoever types one of these means it, so nothing is put behind it.
constexpr std::array kOtherTables{".csv", ".ods", ".tsv", ".txt", ".xls", ".xlsb", ".xlsm", ".xltx"};

}  // namespace

bool IsThere(const fs::path& file) {
  std::error_code ignored;
  return fs::exists(fs::symlink_status(file, ignored));
}

std::string Quoted(const fs::path& file) { return "\"" + file.string() + "\""; }

fs::path WithWorkbookEnding(const fs::path& file) {
  const std::string ending = file.extension().string();
  const bool stays = WhyNoWorkbook(file).empty() || std::ranges::any_of(kOtherTables, [&](const char* other) {
                       return EqualText(ending, other);
                     });
  return stays ? file : fs::path(file.string() + ".xlsx");
}

std::optional<ChosenWorkbook> WorkbookChoice::AskWhich(Mood mood, const std::string& why,
                                                       const std::optional<ChosenWorkbook>& former) {
  return AskFrom(former ? former->file.parent_path() : fs::path(), mood, why, former);
}

std::optional<ChosenWorkbook> WorkbookChoice::AskFrom(const fs::path& folder, Mood mood,
                                                      const std::string& why,
                                                      const std::optional<ChosenWorkbook>& former) {
  std::vector<std::string> choices{kNew, kOpen};
  if (former) choices.emplace_back(kAgain);
  while (const auto choice = screen_.Ask(mood, why, choices)) {
    if (choices[*choice] == kAgain) return former;
    auto chosen = choices[*choice] == kNew ? AskForNew(folder) : AskForOld(folder);
    if (chosen) return chosen;
  }
  return std::nullopt;
}

std::optional<ChosenWorkbook> WorkbookChoice::AskForAnother(const fs::path& former) {
  return AskFrom(
      former.parent_path(), Mood::kQuestion,
      "Take another workbook in place of " + Quoted(former) +
          "?\n\nThe dialog is filled anew then. What was changed in it and not stored with Go goes.",
      std::nullopt);
}

std::optional<ChosenWorkbook> WorkbookChoice::AskForNew(const fs::path& folder) {
  fs::path name = kProposedName;
  fs::path place = folder;
  while (const auto typed = screen_.AskForNewFile(place, name.string())) {
    const fs::path file = WithWorkbookEnding(*typed);
    place = file.parent_path();
    name = file.filename();
    if (const std::string why = WhyNoWorkbook(file); !why.empty()) {
      screen_.Tell(Mood::kTrouble, why + ".");
      continue;
    }
    if (!IsThere(file)) return ChosenWorkbook{file, true};
    const auto answer =
        screen_.Ask(Mood::kQuestion,
                    Quoted(file) +
                        " is there already. Take it as it is?\n\nIts sheets stay, but for those "
                        "of the quotes, which Go makes anew.",
                    {"Take It", "Choose Another Name..."});
    if (!answer) return std::nullopt;
    if (*answer == 0) return ChosenWorkbook{file, false};
  }
  return std::nullopt;
}

std::optional<ChosenWorkbook> WorkbookChoice::AskForOld(const fs::path& folder) {
  const auto file = screen_.AskForFile(folder);
  return file ? std::optional(ChosenWorkbook{*file, false}) : std::nullopt;
}

std::optional<fs::path> WorkbookChoice::AskForCopy(const fs::path& former) {
  fs::path name = former.stem().string() + "-copy.xlsx";
  fs::path place = former.parent_path();
  while (const auto typed = screen_.AskForNewFile(place, name.string())) {
    const fs::path file = WithWorkbookEnding(*typed);
    place = file.parent_path();
    name = file.filename();
    std::string why = WhyNoWorkbook(file);
    if (why.empty() && IsThere(file))
      why = Quoted(file) + " is there already, and what it holds would be lost. Choose a name that is free";
    if (why.empty()) return file;
    screen_.Tell(Mood::kTrouble, why + ".");
  }
  return std::nullopt;
}

}  // namespace mirelo::app
