#include "app/workbook_keeper.h"

#include <algorithm>
#include <exception>
#include <system_error>
#include <utility>

#include "automation/format.h"
#include "automation/runtime_error.h"
#include "host/clock.h"
#include "host/host.h"

namespace mirelo::app {

namespace fs = std::filesystem;

namespace {

constexpr int kPauseForSaving = 20;

std::string TimeNow() {
  host::Clock& clock = host::Host::Current().clock();
  return Format(clock.Now(), "hh:mm:ss", clock.Regional());
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

}  // namespace

WorkbookKeeper::WorkbookKeeper(host::MessageLoop& loop, host::Document& document, const fs::path& file,
                               std::function<void()> before_saving, host::Document::Tell tell_loss)
    : loop_(loop),
      document_(document),
      file_(fs::absolute(file)),
      before_saving_(std::move(before_saving)),
      tell_loss_(std::move(tell_loss)) {}

WorkbookKeeper::~WorkbookKeeper() { loop_.StopTimer(timer_); }

void WorkbookKeeper::SaveAtIntervals(std::chrono::milliseconds interval) {
  timer_ = loop_.StartTimer(std::max(interval, kPauseForSaving * worked_), [this, interval] {
    Save();
    SaveAtIntervals(interval);
  });
}

fs::path WorkbookKeeper::SaveAtEnd() {
  loop_.StopTimer(timer_);
  if (Save()) return file_;
  trouble_.clear();  // another file, another trouble
  file_ = FreeNameBeside(file_);
  return Save() ? file_ : fs::path();
}

// Whoever had the workbook open in another program and saved it there would lose that, or lose the day's
// rows.
void WorkbookKeeper::LeaveTheFileToOthers() {
  const std::string left = file_.filename().string();
  file_ = FreeNameBeside(file_);
  trouble_.clear();
  Tell("Another program has changed " + left + "; saving in " + file_.filename().string() + " from now on");
}

bool WorkbookKeeper::Save() {
  const auto start = std::chrono::steady_clock::now();
  std::string trouble = TroubleOfSaving();
  worked_ = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
  state_ = trouble.empty() ? "saved " + TimeNow() : "not saved: " + trouble;
  if (std::exchange(trouble_, trouble) != trouble)
    Tell(trouble.empty() ? "Saved again" : "Not saved, going on: " + trouble);
  return trouble.empty();
}

std::string WorkbookKeeper::TroubleOfSaving() try {
  before_saving_();
  SaveWhereNobodyElseDid();
  return {};
} catch (const std::exception&) {
  return CurrentError().Description();
}

void WorkbookKeeper::SaveWhereNobodyElseDid() try {
  document_.Save(file_, tell_loss_);
} catch (const host::ChangedMeanwhile&) {
  LeaveTheFileToOthers();
  document_.Save(file_, tell_loss_);
}

void WorkbookKeeper::Tell(const std::string& line) const try {
  Status.Raise(line);
} catch (const std::exception&) {  // whoever shows it has failed, not who saves
}

}  // namespace mirelo::app
