#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace mirelo::host {

// What failure reports ask of the operating system: which one it is, and an entry in its event log.
class OperatingSystem {
 public:
  static constexpr std::int32_t kPlatformNt = 2;  // platform id of the NT family
  static constexpr int kEventError = 1;           // event type of LogEvent

  virtual ~OperatingSystem() = default;
  // The platform id, or nothing when the call fails for a record of this size (156 is the long form, 148 the
  // short).
  virtual std::optional<std::int32_t> GetVersionExA(std::int32_t record_size) = 0;
  // Writes to the system's event log.
  virtual void LogEvent(const std::string& text, int event_type) = 0;
};

}  // namespace mirelo::host
