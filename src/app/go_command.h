#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "app/dialog_wishes.h"

namespace CLI {
class App;
}

namespace mirelo::app {

struct GlobalOptions;

// mirelo go: fills the settings dialog without showing it and presses its Go.
class GoCommand {
 public:
  GoCommand(CLI::App& program, const GlobalOptions& global);

  bool IsChosen() const;
  int Run();

 private:
  DialogWishes Wishes() const;
  int Report(std::int32_t result, int messages);

  const GlobalOptions& global_;
  CLI::App* command_;
  std::vector<std::string> tickers_;
  std::vector<std::string> columns_;
  std::vector<std::string> settings_;
  std::vector<std::string> ticks_;
  std::string source_;
  std::optional<std::filesystem::path> workbook_;
  std::string address_;
  int http_port_ = 0;
  int socket_port_ = 0;
};

}  // namespace mirelo::app
