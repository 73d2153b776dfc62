#include "adapters/spdlog/log_file.h"

#include <fcntl.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <system_error>
#include <utility>

#include "automation/runtime_error.h"
#include "automation/visible_text.h"

namespace mirelo::logging {

namespace fs = std::filesystem;

namespace {

spdlog::level::level_enum Named(host::Log::Level level) {
  switch (level) {
    case host::Log::Level::Debug:
      return spdlog::level::debug;
    case host::Log::Level::Info:
      return spdlog::level::info;
    case host::Log::Level::Warning:
      return spdlog::level::warn;
    case host::Log::Level::Error:
      break;
  }
  return spdlog::level::err;
}

[[noreturn]] void Refuse(const fs::path& file, const std::string& reason) {
  throw RuntimeError(Errors::PathFileAccess().Number(),
                     "Cannot write the log " + Visible(file.string()) + ": " + reason);
}

// A file that is put away is renamed. Nobody wants that of a device.
void RefuseWhatIsNoFile(const fs::path& file) {
  std::error_code error;
  const fs::file_status status = fs::status(file, error);
  if (fs::exists(status) && !fs::is_regular_file(status)) Refuse(file, "it is no regular file");
}

// Others may not read what somebody trades, and programs that are started do not get the file.
void Keep(std::FILE* file) {
  ::fchmod(::fileno(file), S_IRUSR | S_IWUSR);
  ::fcntl(::fileno(file), F_SETFD, FD_CLOEXEC);
}

// A cut leaves no half of a character behind, for what is left is made visible.
std::string_view Shortened(std::string_view line) { return line.substr(0, LogFile::kLongestLine); }

}  // namespace

// The library's file. What it raises leaves it in a state that must not be used any more.
class LogFile::Sink {
 public:
  Sink(const fs::path& file, const Limits& limits)
      : sink_(file.string(), limits.bytes, limits.old_files, false, Handlers()) {
    sink_.set_formatter(std::make_unique<spdlog::pattern_formatter>("%Y-%m-%dT%H:%M:%S.%eZ [%l] %v",
                                                                    spdlog::pattern_time_type::utc));
  }

  void Write(Level level, std::string_view line) {
    sink_.log({spdlog::source_loc{}, spdlog::string_view_t{}, Named(level),
               spdlog::string_view_t{line.data(), line.size()}});
    sink_.flush();
  }

 private:
  static spdlog::file_event_handlers Handlers() {
    spdlog::file_event_handlers handlers;
    handlers.after_open = [](const std::string&, std::FILE* file) { Keep(file); };
    return handlers;
  }

  spdlog::sinks::rotating_file_sink_st sink_;
};

LogFile::LogFile(fs::path file, Level least, std::function<void(const std::string&)> tell)
    : LogFile(std::move(file), least, std::move(tell), Limits{}) {}

LogFile::LogFile(fs::path file, Level least, std::function<void(const std::string&)> tell, Limits limits)
    : file_(std::move(file)), least_(least), tell_(std::move(tell)), limits_(limits) {
  RefuseWhatIsNoFile(file_);
  try {
    sink_ = std::make_unique<Sink>(file_, limits_);
  } catch (const spdlog::spdlog_ex& failure) {
    Refuse(file_, failure.what());
  }
}

LogFile::~LogFile() = default;

void LogFile::Write(Level level, std::string_view line) noexcept {
  if (level < least_) return;
  try {
    WriteLine(level, line);
  } catch (const std::exception& failure) {
    LeaveAlone(failure.what());
  }
}

void LogFile::WriteLine(Level level, std::string_view line) {
  if (!sink_) {
    ++lost_;
    if (Clock::now() < try_again_) return;
    sink_ = std::make_unique<Sink>(file_, limits_);
    sink_->Write(Level::Warning, std::to_string(lost_ - 1) + " lines are missing here");
    lost_ = 0;
  }
  sink_->Write(level, Visible(Shortened(line)));
}

void LogFile::LeaveAlone(const std::string& reason) {
  const bool is_new = lost_ == 0;
  if (is_new) lost_ = 1;
  sink_.reset();
  try_again_ = Clock::now() + limits_.pause;
  if (is_new) tell_("The log " + Visible(file_.string()) + " cannot be written: " + reason);
}

}  // namespace mirelo::logging
