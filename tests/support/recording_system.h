#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/operating_system.h"

namespace mirelo::testing {

// An operating system of any platform, whose event log is a list.
class RecordingSystem : public host::OperatingSystem {
 public:
  struct LoggedEvent {
    std::string text;
    int type = 0;
    friend bool operator==(const LoggedEvent&, const LoggedEvent&) = default;
  };

  std::vector<LoggedEvent> events;                 // oldest first
  std::vector<std::int32_t> version_record_sizes;  // asked for, in order

  std::int32_t platform = 1;                    // not of the NT family
  std::set<std::int32_t> failing_record_sizes;  // sizes for which GetVersionExA fails

  std::optional<std::int32_t> GetVersionExA(std::int32_t record_size) override;
  void LogEvent(const std::string& text, int event_type) override { events.push_back({text, event_type}); }
};

}  // namespace mirelo::testing
