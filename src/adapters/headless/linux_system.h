#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "host/operating_system.h"

namespace mirelo::headless {

// Linux, with the syslog as its event log.
class LinuxSystem : public host::OperatingSystem {
 public:
  // Linux has no platform id. An event log is kept only for platforms of the NT family, so `poses_as_nt` is
  // how the syslog is asked for: the platform is then reported as kPlatformNt.
  explicit LinuxSystem(bool poses_as_nt = false) : poses_as_nt_(poses_as_nt) {}

  std::optional<std::int32_t> GetVersionExA(std::int32_t record_size) override;
  // Event type kEventError is logged with the priority of an error, any other one as a notice.
  void LogEvent(const std::string& text, int event_type) override;

 private:
  bool poses_as_nt_;
};

}  // namespace mirelo::headless
