#include "app/workbook/workbook_keeper.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <system_error>
#include <utility>

#include "app/workbook/workbook_file.h"
#include "automation/format.h"
#include "automation/number.h"
#include "automation/runtime_error.h"
#include "host/clock.h"
#include "host/host.h"

namespace mirelo::app {

namespace fs = std::filesystem;

namespace {

using Level = host::Log::Level;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr int kPauseForStandingStill = 20;
constexpr seconds kShortWait{1};
constexpr seconds kLongWait{10};

std::string TimeNow() {
  host::Clock& clock = host::Host::Current().clock();
  return Format(clock.Now(), "hh:mm:ss", clock.Regional());
}

// " (12.3 KB)"; empty when it cannot be told.
std::string SizeOf(const fs::path& file) {
  std::error_code failure;
  const auto bytes = fs::file_size(file, failure);
  if (failure) return "";
  constexpr double kKilobyte = 1024;
  const double kilobytes = static_cast<double>(bytes) / kKilobyte;
  const bool is_large = kilobytes >= kKilobyte;
  const double tenths = std::round((is_large ? kilobytes / kKilobyte : kilobytes) * 10);
  return " (" + NumberText(tenths / 10) + (is_large ? " MB)" : " KB)");
}

fs::path FreeNameBeside(const fs::path& file) {
  for (int number = 1;; ++number) {
    fs::path name = file.stem();
    name += std::string("-").append(std::to_string(number));
    name += file.extension();
    fs::path beside = file.parent_path() / name;
    std::error_code ignored;
    if (!fs::exists(beside, ignored)) return beside;
  }
}

std::string TextOf(const std::exception_ptr& failure) {
  if (!failure) return {};
  try {
    std::rethrow_exception(failure);
  } catch (const std::exception&) {
    return CurrentError().Description();
  }
}

// Behind the text of the failure: ". Make room on the disk ...". Empty where that says what to do by itself.
std::string AdviceOn(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (const RuntimeError& error) {
    const std::string advice = WhatToDoAbout(error);
    if (advice.empty()) return {};
    return (error.Description().ends_with('.') ? " " : ". ") + advice;
  } catch (const std::exception&) {
    return {};
  }
}

bool IsChangedMeanwhile(const std::exception_ptr& failure) {
  if (!failure) return false;
  try {
    std::rethrow_exception(failure);
  } catch (const host::ChangedMeanwhile&) {
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace

WorkbookKeeper::WorkbookKeeper(host::MessageLoop& loop, host::Document& document, const fs::path& file,
                               std::function<void()> before_saving, host::Document::Tell tell_loss,
                               Manner manner)
    : loop_(loop),
      document_(document),
      file_(fs::absolute(file)),
      before_saving_(std::move(before_saving)),
      tell_loss_(std::move(tell_loss)),
      manner_(manner) {}

WorkbookKeeper::~WorkbookKeeper() {
  for (const auto timer : {timer_, waiting_}) loop_.StopTimer(timer);
  if (!IsSaving()) return;
  saving_.reset();
  try {
    Note("is broken off: what it was to hold may not be in " + file_.string(), Level::Warning);
  } catch (const std::exception&) {  // there is no memory to tell of it
  }
}

std::string WorkbookKeeper::State() const {
  return IsSaving() ? state_ + ", saving since " + saving_since_ : state_;
}

// --- At intervals --------------------------------------------------------------------------------------

void WorkbookKeeper::SaveAtIntervals(milliseconds interval) {
  interval_ = interval;
  AwaitInterval();
}

void WorkbookKeeper::AwaitInterval() {
  timer_ = loop_.StartTimer(std::max(interval_, kPauseForStandingStill * stood_still_), [this] {
    SaveNow();
    AwaitInterval();
  });
}

void WorkbookKeeper::SaveNow() {
  if (IsSaving()) {
    is_due_again_ = true;
  } else {
    Save();
  }
}

void WorkbookKeeper::Save() {
  const auto start = std::chrono::steady_clock::now();
  std::exception_ptr failure;
  try {
    BeginToSave();
  } catch (const std::exception&) {
    failure = std::current_exception();
  }
  stood_still_ = std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start);
  if (!IsSaving()) EndSaving(failure);
}

void WorkbookKeeper::BeginToSave() {
  is_due_again_ = false;
  ++saves_;
  before_saving_();
  Note("begins, with all that has been written until now");
  if (manner_ == Manner::kBeside) {
    saving_since_ = TimeNow();
    saving_ = document_.SaveBeside(loop_, file_, tell_loss_,
                                   [this](const std::exception_ptr& failure) { EndSaving(failure); });
  }
  if (!IsSaving()) document_.Save(file_, tell_loss_);
}

void WorkbookKeeper::EndSaving(const std::exception_ptr& failure) {
  saving_.reset();
  const bool gives_way = !has_given_way_ && IsChangedMeanwhile(failure);
  has_given_way_ = gives_way;
  if (gives_way) {
    Note("gives way: " + TextOf(failure), Level::Warning);
    LeaveTheFileToOthers();
    return Save();
  }
  const std::string trouble = TextOf(failure);
  if (trouble.empty()) {
    Note("is in " + file_.string());
  } else {
    Note("failed: " + trouble, Level::Warning);
  }
  state_ = trouble.empty() ? "saved " + TimeNow() + SizeOf(file_) : "not saved: " + trouble;
  if (std::exchange(trouble_, trouble) != trouble)
    Tell(trouble.empty() ? "Saved again" : "Not saved, going on: " + trouble + AdviceOn(failure));
  if (is_due_again_) Save();
}

// --- At the end ----------------------------------------------------------------------------------------

fs::path WorkbookKeeper::SaveAtEnd() {
  loop_.StopTimer(timer_);
  is_due_again_ = false;
  AwaitEndOfSaving();
  if (SaveAndWait()) return file_;
  trouble_.clear();  // another file, another trouble
  file_ = FreeNameBeside(file_);
  return SaveAndWait() ? file_ : fs::path();
}

bool WorkbookKeeper::SaveAndWait() {
  Save();
  AwaitEndOfSaving();
  return trouble_.empty();
}

// What else the loop handles may fail, but the day is over.
void WorkbookKeeper::AwaitEndOfSaving() {
  if (!IsSaving()) return;
  TellOfWaiting(kShortWait);
  while (IsSaving()) {
    try {
      loop_.RunUntil([this] { return !IsSaving(); });
    } catch (const std::exception&) {
    }
  }
  loop_.StopTimer(waiting_);
}

void WorkbookKeeper::TellOfWaiting(seconds pause) {
  waiting_ = loop_.StartTimer(pause, [this] {
    Tell("Saving " + file_.filename().string() + " since " + saving_since_);
    TellOfWaiting(kLongWait);
  });
}

// --- What becomes of it --------------------------------------------------------------------------------

// Whoever had the workbook open in another program and saved it there would lose that, or lose the day's
// rows.
void WorkbookKeeper::LeaveTheFileToOthers() {
  const std::string left = file_.filename().string();
  file_ = FreeNameBeside(file_);
  trouble_.clear();
  Tell("Another program has changed " + left + "; saving in " + file_.filename().string() + " from now on");
}

void WorkbookKeeper::Note(const std::string& line, Level level) const {
  Noted.Raise(level, "save " + std::to_string(saves_) + " " + line);
}

void WorkbookKeeper::Tell(const std::string& line) const try {
  Status.Raise(line);
} catch (const std::exception&) {  // whoever shows it has failed, not who saves
}

}  // namespace mirelo::app
