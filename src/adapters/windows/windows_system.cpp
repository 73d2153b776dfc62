#include "adapters/windows/system.h"

#include <cstddef>

#include "adapters/windows/windows_system.h"

// Windows' name for either form of the function.
#undef GetVersionEx

namespace mirelo::windows {

std::optional<std::int32_t> WindowsSystem::GetVersionExA(std::int32_t record_size) {
  OSVERSIONINFOEXA record{};
  if (record_size < 0 || static_cast<std::size_t>(record_size) > sizeof(record)) return std::nullopt;
  record.dwOSVersionInfoSize = static_cast<DWORD>(record_size);
  if (!::GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(&record))) return std::nullopt;
  return static_cast<std::int32_t>(record.dwPlatformId);
}

void WindowsSystem::LogEvent(const std::string& text, int event_type) {
  const HANDLE log = ::RegisterEventSourceA(nullptr, "Mirelo");
  if (log == nullptr) return;
  const WORD type = event_type == kEventError ? EVENTLOG_ERROR_TYPE : EVENTLOG_INFORMATION_TYPE;
  const char* const texts[] = {text.c_str()};
  ::ReportEventA(log, type, 0, 0, nullptr, 1, 0, const_cast<const char**>(texts), nullptr);
  ::DeregisterEventSource(log);
}

}  // namespace mirelo::windows
