#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "host/log.h"

namespace mirelo::logging {

// A log in a file, for its owner's eyes only (mode 0600), a line an entry:
//
//   2026-11-22T11:07:10.123Z [info] Logged in
//
// The time is UTC. A line is on its way to the disk when Write returns. A file that grows beyond kMostBytes
// becomes NAME.1.EXTENSION, the one before it NAME.2.EXTENSION, and so on; the oldest of kOldFiles goes.
// Where two processes share a file, lines stay whole, but files may be put away sooner.
class LogFile : public host::Log {
 public:
  static constexpr std::size_t kMostBytes = std::size_t{10} * 1024 * 1024;
  static constexpr std::size_t kOldFiles = 4;
  // The longest line that is written, in bytes; longer ones are cut there.
  static constexpr std::size_t kLongestLine = 4000;
  // How long nothing is written after the file has failed, before it is tried again.
  static constexpr std::chrono::seconds kPause{10};

  struct Limits {
    std::size_t bytes = kMostBytes;
    std::size_t old_files = kOldFiles;
    std::chrono::milliseconds pause = kPause;
  };

  // Writes lines of the level `least` and above. `tell` is called with a sentence for a person when the file
  // fails, once until it has recovered; it must raise nothing.
  //
  // Makes the folder and the file where they are absent. Error 75, with the file and the reason as text, when
  // that fails or something else than a file stands there.
  LogFile(std::filesystem::path file, Level least, std::function<void(const std::string&)> tell,
          Limits limits);
  LogFile(std::filesystem::path file, Level least, std::function<void(const std::string&)> tell);
  ~LogFile() override;

  void Write(Level level, std::string_view line) noexcept override;

 private:
  class Sink;
  using Clock = std::chrono::steady_clock;

  void WriteLine(Level level, std::string_view line);
  void LeaveAlone(const std::string& reason);

  std::filesystem::path file_;
  Level least_;
  std::function<void(const std::string&)> tell_;
  Limits limits_;
  std::unique_ptr<Sink> sink_;     // null while a file that failed is left alone
  Clock::time_point try_again_{};  // when to open it again, while that is null
  std::int64_t lost_ = 0;          // lines that were not written since it failed
};

}  // namespace mirelo::logging
