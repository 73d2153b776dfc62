#include "app/dialog/dialog_on_screen.h"

#include <cstddef>
#include <exception>
#include <memory>

#include "app/failure_reason.h"
#include "app/session.h"
#include "app/workbook/spreadsheet_program.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "automation/visible_text.h"
#include "core/cMirelo.h"
#include "day/after_go.h"
#include "day/dialog_result.h"
#include "forms/button.h"
#include "forms/form.h"

namespace mirelo::app {

namespace fs = std::filesystem;

namespace {

using Mood = Screen::Mood;

constexpr const char* kDialog = "frmMirelo";
constexpr const char* kFirstQuestion =
    "Mirelo keeps your tickers and their quotes in a workbook: an .xlsx file, which LibreOffice and Excel "
    "open.\n\nWhich one is it to be?";
constexpr const char* kWhichInstead = "\n\nWhich workbook is it to be?";
constexpr const char* kAnother = "choose another workbook";

// A word for the shell.
std::string ShellWord(const std::string& text) { return "'" + Replace(text, "'", "'\\''") + "'"; }

std::string Sentence(const std::string& text) {
  return text.ends_with('.') || text.ends_with('\n') ? text : text + ".";
}

std::string TextOf(const RuntimeError& error) {
  return Sentence(VisibleLines(WithReason(error).Description()));
}

}  // namespace

DialogOnScreen::DialogOnScreen(Session& session, Screen& screen, const LastWorkbook& last)
    : session_(session), screen_(screen), last_(last) {}

bool DialogOnScreen::Run(const std::optional<fs::path>& file) {
  const std::optional<fs::path> known = file ? std::optional(fs::absolute(*file)) : last_.Recall();
  next_ = known ? std::optional(ChosenWorkbook{*known, false})
                : choice_.AskWhich(Mood::kQuestion, kFirstQuestion);
  End end = End::kGoesOn;
  while (end == End::kGoesOn && next_) {
    const ChosenWorkbook workbook = *next_;
    next_.reset();
    end = WorkOn(workbook);
  }
  return end == End::kKept;
}

DialogOnScreen::End DialogOnScreen::WorkOn(const ChosenWorkbook& workbook) try {
  const fs::path& file = workbook.file;
  if (const std::string why = WhyNoWorkbook(file); !why.empty()) return GoOnAfter(Sentence(why), workbook);
  if (!workbook.is_new && !IsThere(file)) {
    return GoOnAfter(
        "There is no " + Quoted(file) +
            " any more. It was moved, renamed or removed, or the disk that it is on is not there.",
        workbook);
  }
  host::Documents& documents = session_.documents();
  warnings_.clear();
  const Front front{[this](const std::string& warning) { warnings_.push_back(Sentence(warning)); }, kAnother};
  const auto hold = HoldForGo(documents, file, front);
  const auto document = IsThere(file) ? documents.Open(file) : documents.New();
  for (const std::string& loss : document->NewLosses()) warnings_.push_back(Sentence(loss));
  if (!warnings_.empty()) {
    screen_.Tell(Mood::kTrouble, "Before Go saves " + Quoted(file) + ", you should know:\n\n" +
                                     VisibleLines(Join(warnings_, "\n")));
  }
  if (IsThere(file)) Remember(file);
  return Show(workbook, *document);
} catch (const RuntimeError& error) {
  session_.document = nullptr;
  return GoOnAfter(TextOf(error), workbook);
}

DialogOnScreen::End DialogOnScreen::GoOnAfter(const std::string& failure, const ChosenWorkbook& workbook) {
  next_ = choice_.AskWhich(Mood::kTrouble, failure + kWhichInstead, workbook);
  return next_ ? End::kGoesOn : End::kGivenUp;
}

DialogOnScreen::End DialogOnScreen::Show(const ChosenWorkbook& workbook, host::Document& document) {
  const fs::path& file = workbook.file;
  screen_.PutAbove(kDialog, {WhereGoSaves(file), "Other &Workbook...", [this, file] { TakeAnother(file); }});
  session_.document = &document;
  cMirelo& facade = session_.facade();
  facade.ExcelApplication(Variant(document.Application()));
  const bool committed = day::IsCommitted(facade.LoadFrmMirelo());
  if (committed) {
    day::FinishGo(facade);
    const End end = Keep(file, document);
    session_.document = nullptr;
    return end;
  }
  session_.document = nullptr;
  return next_ ? End::kGoesOn : End::kGivenUp;
}

// The dialog is left as by its Cancel, so nothing of it is stored.
void DialogOnScreen::TakeAnother(const fs::path& former) {
  forms::Form* const dialog = forms::ActiveForm();
  if (dialog == nullptr || dialog->Name() != kDialog) return;
  next_ = choice_.AskForAnother(former);
  if (next_) dialog->UserEscape();
}

// The settings are stored by now, and the tables are built: a file that does not take them must not cost
// them.
DialogOnScreen::End DialogOnScreen::Keep(const fs::path& file, host::Document& document) {
  fs::path target = file;
  std::unique_ptr<host::DocumentHold> hold;  // of another file
  const Front front{[this](const std::string& warning) { screen_.Tell(Mood::kTrouble, Sentence(warning)); },
                    kAnother};
  while (true) {
    std::string failure;
    bool has_changed = false;
    try {
      if (target != file) hold = HoldForGo(session_.documents(), target, front);
      SaveTold(target, document, front);
      return Finish(target);
    } catch (const host::ChangedMeanwhile& changed) {
      has_changed = target == file;
      failure = TextOf(changed);
    } catch (const RuntimeError& error) {
      failure = TextOf(error);
    }
    const auto choice =
        screen_.Ask(Mood::kTrouble,
                    failure + "\n\nThe settings are stored, but " + Quoted(target) +
                        " is as it was. What Go has built is lost when you cancel now.",
                    {"Save as Another Workbook...", has_changed ? "Open It Again" : "Try Again"});
    if (!choice) return End::kGivenUp;
    if (*choice == 0) {
      if (const auto copy = choice_.AskForCopy(target)) target = *copy;
    } else if (has_changed) {
      next_ = ChosenWorkbook{file, false};
      return End::kGoesOn;
    }
  }
}

DialogOnScreen::End DialogOnScreen::Finish(const fs::path& file) {
  Remember(file);
  std::string text = "The quote table is saved in " + Quoted(file) +
                     ".\n\nTo have quotes come into it, run this in a terminal:\nmirelo run --workbook " +
                     ShellWord(file.string());
  if (!forgotten_.empty())
    text += "\n\nNext time you will be asked for the workbook, since it could not be remembered: " +
            Sentence(forgotten_);
  screen_.Tell(Mood::kQuestion, VisibleLines(text));
  return End::kKept;
}

void DialogOnScreen::Remember(const fs::path& file) try {
  last_.Remember(file);
  forgotten_.clear();
} catch (const RuntimeError& error) {
  forgotten_ = error.Description();
}

}  // namespace mirelo::app
