#include "app/workbook/workbook_file.h"

#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <system_error>

#include "automation/runtime_error.h"
#include "automation/visible_text.h"
#include "host/excel/application.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "terminal/standard_streams.h"
#include "worksheet/quote_table.h"

namespace mirelo::app {

using terminal::Err;

namespace {

constexpr std::int32_t kDiskFull = 61;

using Cause = host::FileFailure::Cause;

struct CauseAndAdvice {
  Cause cause;
  const char* advice;
};
constexpr std::array kAdvice{
    CauseAndAdvice{Cause::kNoRoom, "Make room on the disk"},
    CauseAndAdvice{Cause::kSizeLimit, "Raise the limit of file sizes (ulimit -f), or make room on the disk"},
    CauseAndAdvice{Cause::kRights, "Make the file and its folder writable"},
    CauseAndAdvice{Cause::kReadOnly, "Make its file system writable"},
    CauseAndAdvice{Cause::kNoFolder, "Make its folder"},
    CauseAndAdvice{Cause::kLinksInACircle, "Remove the symbolic link, which leads back to itself"},
    CauseAndAdvice{Cause::kNoRegularFile, "See that nothing but a file stands there"},
    CauseAndAdvice{Cause::kLongName, "Make the name shorter: hidden files beside it have longer ones"},
    CauseAndAdvice{Cause::kOther, "Mend that"},
};
constexpr const char* kAnotherByOption = "name another file with --workbook";
constexpr const char* kGoAgain = "Press Go again, on what that program has saved.";

bool FileSizesAreLimited() {
  rlimit limit{};
  return ::getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
}

// Nothing for an error that no other file would mend, or whose text says what to do. Some failures of writing
// have no more than a number, and a file that reaches the limit may fail as on a full disk.
std::optional<Cause> CauseOf(const RuntimeError& error) {
  std::optional<Cause> cause;
  if (error.Number() == kDiskFull) cause = Cause::kNoRoom;
  if (error.Number() == Errors::PathFileAccess().Number()) cause = Cause::kOther;
  if (const auto* failure = dynamic_cast<const host::FileFailure*>(&error)) cause = failure->Why();
  return cause == Cause::kNoRoom && FileSizesAreLimited() ? Cause::kSizeLimit : cause;
}

std::string AdviceFor(Cause cause, const std::string& another) {
  const std::string advice = std::ranges::find(kAdvice, cause, &CauseAndAdvice::cause)->advice;
  return advice + ", or " + another + ".";
}

std::string AsSentence(const std::string& text) { return text.ends_with('.') ? text : text + '.'; }

// Does what may fail to save; the error's text then says what to do as well.
template <class Attempt>
auto SayingWhatToDo(const Front& front, Attempt&& attempt) {
  try {
    return attempt();
  } catch (const host::ChangedMeanwhile& changed) {
    throw host::ChangedMeanwhile(RuntimeError(
        changed.Number(), AsSentence(changed.Description()) + "\n" + kGoAgain, changed.Source()));
  } catch (const RuntimeError& error) {
    const auto cause = CauseOf(error);
    if (!cause) throw;
    throw RuntimeError(error.Number(),
                       AsSentence(error.Description()) + "\n" + AdviceFor(*cause, front.another),
                       error.Source());
  }
}

std::unique_ptr<host::DocumentHold> HoldWarned(host::Documents& documents, const std::filesystem::path& file,
                                               const Front& front) {
  auto hold = SayingWhatToDo(front, [&] { return documents.Hold(file); });
  if (!hold->IsLocked())
    front.warn("its file system knows no locks; see that no other Mirelo saves it meanwhile");
  return hold;
}

}  // namespace

std::unique_ptr<host::Document> OpenOrNew(host::Documents& documents, const std::filesystem::path& file) {
  std::error_code error;
  const auto status = std::filesystem::status(file, error);
  if (status.type() == std::filesystem::file_type::not_found) return documents.New();
  auto document = documents.Open(file);
  TellLosses(file, *document);
  return document;
}

void TellLosses(const std::filesystem::path& file, host::Document& document) {
  for (const auto& loss : document.NewLosses()) TellLoss(file, loss);
}

void TellLoss(const std::filesystem::path& file, const std::string& loss) {
  Err() << "warning: " << file.string() << ": " << loss << "\n";
}

void PutQuoteTableInFront(host::Document& document) { PutQuoteTableInFront(*document.Application()); }

void PutQuoteTableInFront(host::excel::Application& application) {
  const auto workbook = application.ActiveWorkbook();
  const auto sheets = workbook ? workbook->Worksheets() : nullptr;
  for (std::int32_t i = 1; sheets && i <= sheets->Count(); ++i) {
    if (const auto sheet = sheets->Item(i); sheet->Name() == kQuoteTable) sheet->Activate();
  }
}

std::string WhatToDoAbout(const RuntimeError& failure) {
  const auto cause = CauseOf(failure);
  return cause ? AdviceFor(*cause, kAnotherByOption) : std::string();
}

std::string WhereGoSaves(const std::filesystem::path& file) {
  std::error_code ignored;
  const bool is_new = !std::filesystem::exists(file, ignored);
  return "Go saves in " + Visible(std::filesystem::absolute(file).string()) + (is_new ? " (new)" : "");
}

Front Terminal(const std::filesystem::path& file) {
  return {[file](const std::string& sentence) { TellLoss(file, sentence); }, kAnotherByOption};
}

std::unique_ptr<host::DocumentHold> HoldForGo(host::Documents& documents, const std::filesystem::path& file,
                                              const Front& front) {
  auto hold = HoldWarned(documents, file, front);
  SayingWhatToDo(front, [&] { documents.RequireSavable(file); });
  return hold;
}

std::unique_ptr<host::DocumentHold> HoldForGo(host::Documents& documents, const std::filesystem::path& file) {
  return HoldForGo(documents, file, Terminal(file));
}

std::unique_ptr<host::DocumentHold> HoldForDay(host::Documents& documents,
                                               const std::filesystem::path& file) {
  return HoldWarned(documents, file, Terminal(file));
}

void SaveTold(const std::filesystem::path& file, host::Document& document, const Front& front) {
  PutQuoteTableInFront(document);
  SayingWhatToDo(front, [&] { document.Save(file, front.warn); });
}

void SaveAfterGo(const std::filesystem::path& file, host::Document& document) {
  try {
    SaveTold(file, document, Terminal(file));
  } catch (const RuntimeError&) {
    Err() << "The settings are stored, but the workbook is as it was.\n";
    throw;
  }
  Err() << "Saved in " << std::filesystem::absolute(file).string() << "\n";
}

}  // namespace mirelo::app
