#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/commands/log_options.h"
#include "app/commands/quote_options.h"
#include "command_line/command.h"

namespace mirelo::day {
class StreamFeed;
}  // namespace mirelo::day

namespace mirelo::app {

struct GlobalOptions;
class DayLog;
class Session;

// mirelo stream: listens to QuoteTracker's Level I stream and prints the quotes as they come.
class StreamCommand {
 public:
  StreamCommand(command_line::Command& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();

 private:
  // The streamer file of --source or of the setting; empty, with a message, when there is none.
  std::string StreamerFile(Session& session) const;
  int Listen(Session& session, day::StreamFeed& feed, DayLog& log);

  const GlobalOptions& global_;
  command_line::Command command_;
  std::vector<std::string> tickers_;
  std::string list_;
  std::string source_;
  QuoteOptions options_;
  int port_ = 0;
  double seconds_ = 0;
  bool csv_ = false;
  bool json_ = false;
  std::optional<std::filesystem::path> recording_;
  std::optional<LogOptions> log_;
};

}  // namespace mirelo::app
