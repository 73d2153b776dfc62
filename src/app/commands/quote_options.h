#pragma once

#include <string>

namespace mirelo::command_line {
class Command;
}

namespace mirelo::app {

class Session;

// The options that commands have which print quotes and open no workbook: where QuoteTracker runs, and how
// dates are written. They hold for the command alone; those of WishOptions go through the settings dialog,
// which stores them. This must outlive the reading.
class QuoteOptions {
 public:
  QuoteOptions() = default;
  QuoteOptions(const QuoteOptions&) = delete;  // the command's options point in here
  QuoteOptions& operator=(const QuoteOptions&) = delete;

  void AddAddress(command_line::Command& command);
  void AddDateFormat(command_line::Command& command);

  // Has the session go by what was given.
  void Apply(Session& session) const;

 private:
  std::string address_;
  std::string date_format_ = "mm/dd/yyyy";
};

}  // namespace mirelo::app
