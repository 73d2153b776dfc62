#pragma once

#include <memory>
#include <optional>
#include <string>

#include "adapters/spdlog/log_file.h"
#include "app/log_options.h"
#include "day/quote_trail.h"
#include "host/log.h"

namespace mirelo::day {
class StreamFeed;
class WorkingDay;
}  // namespace mirelo::day

namespace mirelo::wire {
class ObservedSockets;
}

namespace mirelo::app {

class WorkbookKeeper;

// What a command writes down while it runs. Without a file that was asked for all of this does nothing.
class DayLog {
 public:
  // Opens the file, which is told on the standard error stream where it was not named, and so is that it
  // fails later. Error 75 when it cannot be written, or when no folder is known for it.
  explicit DayLog(const LogWishes& wishes);

  void Note(const std::string& line);

  // Writes down what these tell people, and what becomes of the quotes that are to be explained. Before a day
  // or a feed is started; this must outlive them.
  void Follow(day::WorkingDay& day);
  void Follow(day::StreamFeed& feed, wire::ObservedSockets& sockets);
  void Follow(WorkbookKeeper& keeper);

 private:
  std::optional<logging::LogFile> file_;
  std::optional<day::QuoteTrail> trail_;
};

}  // namespace mirelo::app
