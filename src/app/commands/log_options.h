#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/log.h"

namespace mirelo::command_line {
class Command;
}

namespace mirelo::app {

// What a command is to write down, and where.
struct LogWishes {
  std::optional<std::filesystem::path> file;
  host::Log::Level least = host::Log::Level::Info;
  std::vector<std::string> explained;  // tickers
};

// The options of a command that say so.
class LogOptions {
 public:
  explicit LogOptions(command_line::Command& command);
  LogOptions(const LogOptions&) = delete;  // the command's options point in here
  LogOptions& operator=(const LogOptions&) = delete;

  LogWishes Wishes() const;

 private:
  LogWishes wishes_;  // without the two below, which are texts until they are asked for
  std::string least_ = "info";
  std::string explained_;
};

}  // namespace mirelo::app
