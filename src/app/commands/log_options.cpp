#include "app/commands/log_options.h"

#include <CLI/CLI.hpp>

#include "app/commands/checks.h"
#include "person/ticker_list.h"

namespace mirelo::app {

namespace {

host::Log::Level LevelNamed(const std::string& name) {
  if (name == "debug") return host::Log::Level::Debug;
  if (name == "warning") return host::Log::Level::Warning;
  return name == "error" ? host::Log::Level::Error : host::Log::Level::Info;
}

}  // namespace

LogOptions::LogOptions(CLI::App& command) {
  command
      .add_option("--log", wishes_.file,
                  "Write down what happens in this file, besides what the terminal shows")
      ->type_name("FILE");
  command.add_option("--log-level", least_, "The least that the log holds: debug, info, warning or error")
      ->check(CLI::IsMember(std::vector<std::string>{"debug", "info", "warning", "error"}).description(""))
      ->type_name("LEVEL")
      ->capture_default_str();
  command
      .add_option(
          "--explain", explained_,
          "Write down in the log what becomes of each quote of these tickers, as a,b,c; without --log in "
          "$XDG_STATE_HOME/mirelo/mirelo.log")
      ->check(IsTickers())
      ->type_name("TICKERS");
}

LogWishes LogOptions::Wishes() const {
  LogWishes wishes = wishes_;
  wishes.explained = SplitTickers(explained_);
  wishes.least = LevelNamed(least_);
  return wishes;
}

}  // namespace mirelo::app
