#include "adapters/headless/linux_system.h"

#include <syslog.h>

namespace mirelo::headless {

std::optional<std::int32_t> LinuxSystem::GetVersionExA(std::int32_t /*record_size*/) {
  if (!poses_as_nt_) return std::nullopt;
  return kPlatformNt;
}

void LinuxSystem::LogEvent(const std::string& text, int event_type) {
  const int priority = event_type == kEventError ? LOG_ERR : LOG_NOTICE;
  syslog(LOG_USER | priority, "%s", text.c_str());
}

}  // namespace mirelo::headless
