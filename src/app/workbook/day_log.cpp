#include "app/workbook/day_log.h"

#include <algorithm>
#include <filesystem>

#include "app/state_folder.h"
#include "app/workbook/workbook_keeper.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "day/stream_feed.h"
#include "day/working_day.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

namespace fs = std::filesystem;

using terminal::Err;

namespace {

fs::path DefaultFile() {
  const fs::path folder = StateFolder();
  if (folder.empty())
    throw RuntimeError(
        75, "No folder for the log: neither XDG_STATE_HOME nor HOME names one. Name a file with --log");
  return folder / "mirelo.log";
}

// Who asks what becomes of quotes is told it, whatever else the log leaves out.
host::Log::Level LeastOf(const LogWishes& wishes) {
  return wishes.explained.empty() ? wishes.least : std::min(wishes.least, host::Log::Level::Info);
}

}  // namespace

DayLog::DayLog(const LogWishes& wishes) {
  if (!wishes.file && wishes.explained.empty()) return;
  const fs::path path = wishes.file ? *wishes.file : DefaultFile();
  file_.emplace(path, LeastOf(wishes), [](const std::string& line) { Err() << line << "\n"; });
  if (wishes.explained.empty()) return;
  trail_.emplace(*file_, wishes.explained);
  Err() << "What becomes of the quotes of " << Join(wishes.explained, ", ") << " is written to "
        << path.string() << "\n";
}

void DayLog::Note(const std::string& line) {
  if (file_) file_->Write(host::Log::Level::Info, line);
}

void DayLog::Explain(const std::string& ticker, const char* what) {
  if (trail_) trail_->Note(ticker, what);
}

void DayLog::Follow(day::WorkingDay& day) {
  if (!file_) return;
  day.Status.Subscribe([this](const std::string& line) { Note(line); });
  if (trail_) day.Follow(*trail_);
}

void DayLog::Follow(day::StreamFeed& feed, wire::ObservedSockets& sockets) {
  if (!file_) return;
  feed.Status.Subscribe([this](const std::string& line) { Note(line); });
  if (!trail_) return;
  trail_->Watch(sockets);
  feed.Follow(*trail_);
}

void DayLog::Follow(WorkbookKeeper& keeper) {
  if (!file_) return;
  keeper.Noted.Subscribe(
      [this](host::Log::Level level, const std::string& line) { file_->Write(level, line); });
}

}  // namespace mirelo::app
