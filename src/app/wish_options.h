#pragma once

#include <string>
#include <vector>

#include "app/dialog_wishes.h"

namespace CLI {
class App;
}

namespace mirelo::app {

// The options of a command by which somebody says what to do in the settings dialog.
class WishOptions {
 public:
  explicit WishOptions(CLI::App& command);
  WishOptions(const WishOptions&) = delete;  // the command's options point in here
  WishOptions& operator=(const WishOptions&) = delete;

  // Throws Unfulfilled for what cannot be wished, or is wished twice.
  DialogWishes Wishes() const;

 private:
  std::vector<std::string> tickers_;
  std::vector<std::string> columns_;
  std::vector<std::string> settings_;
  std::vector<std::string> ticks_;
  std::string source_;
  std::string address_;
  int http_port_ = 0;
  int socket_port_ = 0;
};

}  // namespace mirelo::app
