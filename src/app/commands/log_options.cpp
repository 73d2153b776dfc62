#include "app/commands/log_options.h"

#include "app/commands/checks.h"
#include "command_line/command.h"
#include "person/ticker_list.h"

namespace mirelo::app {

namespace {

host::Log::Level LevelNamed(const std::string& name) {
  if (name == "debug") return host::Log::Level::Debug;
  if (name == "warning") return host::Log::Level::Warning;
  return name == "error" ? host::Log::Level::Error : host::Log::Level::Info;
}

}  // namespace

LogOptions::LogOptions(command_line::Command& command) {
  command
      .AddOption("--log", wishes_.file,
                 "Write down what happens in this file, besides what the terminal shows")
      .ValueName("FILE");
  command.AddOption("--log-level", least_, "The least that the log holds: debug, info, warning or error")
      .OneOf({"debug", "info", "warning", "error"}, command_line::Told::kNowhere)
      .ValueName("LEVEL")
      .ShowDefault();
  command
      .AddOption(
          "--explain", explained_,
          "Write down in the log what becomes of each quote of these tickers, as a,b,c; without --log in "
          "$XDG_STATE_HOME/mirelo/mirelo.log")
      .Check(WhyNoTickers)
      .ValueName("TICKERS");
}

LogWishes LogOptions::Wishes() const {
  LogWishes wishes = wishes_;
  wishes.explained = SplitTickers(explained_);
  wishes.least = LevelNamed(least_);
  return wishes;
}

}  // namespace mirelo::app
