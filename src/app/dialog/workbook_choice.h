#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "app/dialog/screen.h"

namespace mirelo::app {

// Whether anything has that name, be it a link that leads nowhere.
bool IsThere(const std::filesystem::path& file);

// The file's name as people are told it.
std::string Quoted(const std::filesystem::path& file);

// The file that a person has chosen for a workbook.
struct ChosenWorkbook {
  std::filesystem::path file;
  bool is_new = false;  // it is to be made, for it was not there
};

// Asks a person which workbook to take: a new one, one that is there, or the former one again.
class WorkbookChoice {
 public:
  explicit WorkbookChoice(Screen& screen) : screen_(screen) {}

  // `why` is said first: what is to be chosen for, or what was wrong with `former`, which is offered once
  // more where there is one. Nothing when the person gives up.
  std::optional<ChosenWorkbook> AskWhich(Screen::Mood mood, const std::string& why,
                                         const std::optional<ChosenWorkbook>& former = std::nullopt);
  // Asks whether another one is to take the place of `former`, and which.
  std::optional<ChosenWorkbook> AskForAnother(const std::filesystem::path& former);
  // A name that is free, in the folder of `former`.
  std::optional<std::filesystem::path> AskForCopy(const std::filesystem::path& former);

 private:
  std::optional<ChosenWorkbook> AskFrom(const std::filesystem::path& folder, Screen::Mood mood,
                                        const std::string& why, const std::optional<ChosenWorkbook>& former);
  std::optional<ChosenWorkbook> AskForNew(const std::filesystem::path& folder);
  std::optional<ChosenWorkbook> AskForOld(const std::filesystem::path& folder);

  Screen& screen_;
};

// The name with ".xlsx" behind it, unless it ends so or in the ending of another kind of table.
std::filesystem::path WithWorkbookEnding(const std::filesystem::path& file);

}  // namespace mirelo::app
