#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/dialog/screen.h"
#include "app/dialog/workbook_choice.h"
#include "app/workbook/last_workbook.h"
#include "app/workbook/workbook_file.h"
#include "host/documents.h"

namespace mirelo::app {

class Session;

// The settings dialog for a person who sees nothing but windows: it is shown for a workbook that is kept,
// says which that is, and takes another one when the person wishes so. What fails is told in windows, with
// what can be done about it, and none of it ends the program.
class DialogOnScreen {
 public:
  // All must outlive this.
  DialogOnScreen(Session& session, Screen& screen, const LastWorkbook& last);

  // Shows it for this workbook, else for the last one, else for one that the person is asked for. A file that
  // is not there is told of, and made only when the person says so. True when the workbook holds what Go has
  // built.
  bool Run(const std::optional<std::filesystem::path>& file);

 private:
  enum class End { kKept, kGivenUp, kGoesOn };

  End WorkOn(const ChosenWorkbook& workbook);
  End Show(const ChosenWorkbook& workbook, host::Document& document);
  End Keep(const std::filesystem::path& file, host::Document& document);
  End Finish(const std::filesystem::path& file);
  void TakeAnother(const std::filesystem::path& former);
  void Remember(const std::filesystem::path& file);
  // Goes on with whatever the person chooses after this failure.
  End GoOnAfter(const std::string& failure, const ChosenWorkbook& workbook);

  Session& session_;
  Screen& screen_;
  const LastWorkbook& last_;
  WorkbookChoice choice_{screen_};
  std::optional<ChosenWorkbook> next_;
  bool takes_another_ = false;
  std::string forgotten_;              // why a workbook could not be remembered
  std::vector<std::string> warnings_;  // that wait to be told together
};

}  // namespace mirelo::app
