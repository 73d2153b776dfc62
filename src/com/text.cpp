#include "com/text.h"

#include "automation/runtime_error.h"

namespace mirelo::com {

std::wstring WideText(std::string_view text) {
  const int length = static_cast<int>(text.size());
  const int needed = ::MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  ::MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), needed);
  return wide;
}

std::string TextOf(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  const int needed = ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(needed), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, text.data(), length, narrow.data(), needed, nullptr, nullptr);
  return narrow;
}

std::string TextOf(const OLECHAR* text) {
  return text == nullptr ? std::string() : TextOf(std::wstring_view(text));
}

BSTR NewText(std::string_view text) {
  const std::wstring wide = WideText(text);
  const BSTR made = ::SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (made == nullptr) throw Errors::OutOfMemory();
  return made;
}

}  // namespace mirelo::com
