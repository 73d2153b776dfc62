#pragma once

#include <optional>
#include <string>
#include <vector>

#include "command_line/option.h"
#include "person/dialog_wishes.h"

namespace mirelo::command_line {
class Command;
}

namespace mirelo::app {

// The options of a command by which somebody says what to do in the settings dialog.
class WishOptions {
 public:
  explicit WishOptions(command_line::Command& command);
  WishOptions(const WishOptions&) = delete;  // the command's options point in here
  WishOptions& operator=(const WishOptions&) = delete;

  // Throws Unfulfilled for what cannot be wished, or is wished twice.
  DialogWishes Wishes() const;

 private:
  std::vector<std::string> tickers_;
  std::string list_;
  std::vector<std::string> columns_;
  std::vector<std::string> settings_;
  std::vector<std::string> ticks_;
  std::optional<command_line::Option> history_option_;
  std::vector<std::string> history_;
  bool charts_ = false;
  bool chart_axis_ = false;
  bool yes_ = false;
  std::string source_;
  std::string address_;
  int http_port_ = 0;
  int socket_port_ = 0;
};

// Puts the tickers of the watch list that is wished behind those that are named. The host's registry must be
// open. Error 5 for a list that there is not.
void TakeList(DialogWishes& wishes);

}  // namespace mirelo::app
