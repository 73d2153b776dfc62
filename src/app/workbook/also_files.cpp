#include "app/workbook/also_files.h"

#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <utility>

#include "adapters/csv/csv_journal.h"
#include "adapters/sqlite/sqlite_journal.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "day/quote_journal.h"
#include "day/working_day.h"
#include "host/journal.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

namespace fs = std::filesystem;

using terminal::Err;
using terminal::Out;

namespace {

constexpr std::string_view kCsvEnding = ".csv";
constexpr std::array<std::string_view, 3> kDatabaseEndings{".db", ".sqlite", ".sqlite3"};

constexpr std::int32_t kNoRoom = 61;

std::string EndingOf(const fs::path& file) { return LCase(file.extension().string()); }

bool IsDatabase(const fs::path& file) {
  return std::ranges::find(kDatabaseEndings, EndingOf(file)) != kDatabaseEndings.end();
}

std::unique_ptr<host::Journal> OpenJournal(const fs::path& file) {
  const auto& columns = day::QuoteJournal::Columns();
  if (IsDatabase(file)) return std::make_unique<sqlite::SqliteJournal>(file, columns);
  return std::make_unique<csv::CsvJournal>(file, columns);
}

bool FilesAreLimited() {
  rlimit limit{};
  return ::getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
}

std::string Advice(const RuntimeError& failure) {
  if (failure.Number() == kNoRoom) {
    return FilesAreLimited() ? "Raise the limit of file sizes (ulimit -f), or make room on the disk."
                             : "Make room on the disk.";
  }
  if (failure.Number() != Errors::PathFileAccess().Number()) return {};
  return "Make the file, its folder and its file system writable.";
}

std::string Sentence(const RuntimeError& failure) {
  const std::string advice = Advice(failure);
  const std::string text = "Quotes are not kept, going on: " + failure.Description();
  return advice.empty() ? text : text + ". " + advice;
}

std::string Quotes(std::int64_t count) { return std::to_string(count) + (count == 1 ? " quote" : " quotes"); }

template <class Opening>
auto SayingWhatElse(Opening&& open) {
  try {
    return open();
  } catch (const host::JournalRefused& refused) {
    throw host::JournalRefused(refused.Number(), refused.Description() + ".\nName another file with --also.",
                               refused.Source());
  }
}

// What else fails is told when the day begins, which goes on then.
void TryToOpen(const fs::path& file) try {
  const auto journal = SayingWhatElse([&] { return OpenJournal(file); });
  if (!journal->Mended().empty()) Err() << journal->Mended() << "\n";
} catch (const host::JournalRefused&) {
  throw;
} catch (const RuntimeError&) {
}

void RequireDifferent(const std::vector<fs::path>& files) {
  for (auto one = files.begin(); one != files.end(); ++one) {
    const bool is_again = std::any_of(files.begin(), one, [&](const fs::path& other) {
      std::error_code ignored;
      return other == *one || fs::equivalent(other, *one, ignored);
    });
    if (is_again) throw RuntimeError(5, "--also names " + one->string() + " twice");
  }
}

}  // namespace

std::string WhyNoAlsoFile(const std::string& file) {
  if (IsDatabase(file) || EndingOf(file) == kCsvEnding) return {};
  return "\"" + file +
         "\" is no file that quotes can be kept in; end it in .db, .sqlite or .sqlite3 for a database, in "
         ".csv for comma-separated values";
}

struct AlsoFiles::Kept {
  Kept(host::MessageLoop& loop, const fs::path& its_file)
      : file(its_file), journal(loop, [its_file] { return OpenJournal(its_file); }) {}

  fs::path file;
  day::QuoteJournal journal;
};

AlsoFiles::AlsoFiles(std::vector<fs::path> files) : files_(std::move(files)) {
  for (const fs::path& file : files_) TryToOpen(file);
  RequireDifferent(files_);
}

AlsoFiles::~AlsoFiles() = default;

void AlsoFiles::Begin(host::MessageLoop& loop, day::WorkingDay& day) {
  for (const fs::path& file : files_) {
    auto& kept = *kept_.emplace_back(std::make_unique<Kept>(loop, file));
    const auto tell = [&day](const std::string& line) { day.Status.Raise(line); };
    kept.journal.Failed.Subscribe([tell](const RuntimeError& failure) { tell(Sentence(failure)); });
    kept.journal.Recovered.Subscribe(
        [tell, name = file.string()] { tell("Quotes are kept in " + name + " again"); });
    kept.journal.Mended.Subscribe(tell);
    SayingWhatElse([&] { kept.journal.Begin(); });
    day.KeepIn(kept.journal);
  }
}

void AlsoFiles::End() {
  for (const auto& kept : kept_) kept->journal.End();
}

bool AlsoFiles::Summarize() const {
  bool is_complete = true;
  for (const auto& kept : kept_) {
    Out() << Quotes(kept->journal.Kept()) << " kept in " << kept->file.string() << "\n";
    if (kept->journal.Lost() == 0) continue;
    is_complete = false;
    Err() << "error: " << Quotes(kept->journal.Lost()) << " could not be kept in " << kept->file.string()
          << "\n";
  }
  Out().Flush();
  return is_complete;
}

}  // namespace mirelo::app
