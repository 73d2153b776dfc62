#pragma once

#include <memory>
#include <optional>
#include <string>

#include "adapters/spdlog/log_file.h"
#include "app/commands/log_options.h"
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
  // Opens the file that was asked for. Where quotes are to be explained its name is told on the standard
  // error stream, and so is any failure of it later on. Error 75 when it cannot be written, or when none was
  // named and no folder is known for it.
  explicit DayLog(const LogWishes& wishes);

  void Note(const std::string& line);
  // What became of a quote of the ticker, if its quotes are to be explained.
  void Explain(const std::string& ticker, const char* what);

  // Subscribes to what these tell people, and has the quotes that are to be explained followed. To be called
  // before a day or a feed is started; this must outlive them.
  void Follow(day::WorkingDay& day);
  void Follow(day::StreamFeed& feed, wire::ObservedSockets& sockets);
  void Follow(WorkbookKeeper& keeper);

 private:
  std::optional<logging::LogFile> file_;
  std::optional<day::QuoteTrail> trail_;
};

}  // namespace mirelo::app
