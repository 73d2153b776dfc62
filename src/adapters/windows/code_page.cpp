#include "adapters/windows/system.h"

#include "adapters/windows/code_page.h"

#include <cstddef>

namespace mirelo::windows {

namespace {

constexpr UINT kWindows1252 = 1252;
// A letter that looks alike would make one name of two.
constexpr DWORD kNoLookAlikes = WC_NO_BEST_FIT_CHARS;

}  // namespace

std::wstring WideOf(std::string_view ansi) {
  std::wstring wide(ansi.size(), L'\0');
  const int length = static_cast<int>(ansi.size());
  ::MultiByteToWideChar(kWindows1252, 0, ansi.data(), length, wide.data(), length);
  return wide;
}

std::string AnsiOf(std::wstring_view wide) {
  const int length = static_cast<int>(wide.size());
  const int needed =
      ::WideCharToMultiByte(kWindows1252, kNoLookAlikes, wide.data(), length, nullptr, 0, "?", nullptr);
  std::string ansi(static_cast<std::size_t>(needed), '\0');
  ::WideCharToMultiByte(kWindows1252, kNoLookAlikes, wide.data(), length, ansi.data(), needed, "?", nullptr);
  return ansi;
}

}  // namespace mirelo::windows
