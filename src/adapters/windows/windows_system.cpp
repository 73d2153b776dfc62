#include "adapters/windows/system.h"

#include <cstddef>

#include "adapters/windows/windows_system.h"
#include "automation/wide_text.h"

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
  const HANDLE log = ::RegisterEventSourceW(nullptr, L"Mirelo");
  if (log == nullptr) return;
  const LogEntry entry = LogEntryOf(text, event_type);
  const wchar_t* texts[] = {entry.text.c_str()};
  ::ReportEventW(log, entry.type, 0, 0, nullptr, 1, 0, texts, nullptr);
  ::DeregisterEventSource(log);
}

// Windows refuses a longer text, and would end one at its first null character.
LogEntry LogEntryOf(const std::string& text, int event_type) {
  constexpr std::size_t kLongest = 31'839;
  std::wstring wide = WideText(text).substr(0, kLongest);
  for (wchar_t& letter : wide) letter = letter == L'\0' ? L' ' : letter;
  const bool is_error = event_type == host::OperatingSystem::kEventError;
  return {is_error ? std::uint16_t{EVENTLOG_ERROR_TYPE} : std::uint16_t{EVENTLOG_INFORMATION_TYPE}, wide};
}

}  // namespace mirelo::windows
