#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/operating_system.h"

namespace mirelo::windows {

// Windows itself, with its log of events, in which Mirelo's entries have the source "Mirelo".
class WindowsSystem : public host::OperatingSystem {
 public:
  std::optional<std::int32_t> GetVersionExA(std::int32_t record_size) override;
  void LogEvent(const std::string& text, int event_type) override;
};

// What Windows' log is given: its type of entry, and the text in Windows' own letters.
struct LogEntry {
  std::uint16_t type;
  std::wstring text;
};
LogEntry LogEntryOf(const std::string& text, int event_type);

}  // namespace mirelo::windows
