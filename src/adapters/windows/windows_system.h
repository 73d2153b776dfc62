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

}  // namespace mirelo::windows
