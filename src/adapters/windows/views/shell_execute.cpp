#include "adapters/windows/views/native.h"

#include <shellapi.h>

#include <algorithm>

#include "adapters/windows/views/native_desktop.h"
#include "automation/wide_text.h"

namespace mirelo::windows {

// Windows would take an empty name for the folder that the program works in.
int NativeDesktop::ShellExecuteA(const std::string& verb, const std::string& file) {
  if (file.empty()) return kShellNoProgram;
  const auto result = reinterpret_cast<INT_PTR>(::ShellExecuteW(
      ::GetDesktopWindow(), WideText(verb).c_str(), WideText(file).c_str(), nullptr, nullptr, SW_SHOWNORMAL));
  constexpr INT_PTR kMost = 0x7FFF;
  return static_cast<int>(std::clamp<INT_PTR>(result, 0, kMost));
}

}  // namespace mirelo::windows
