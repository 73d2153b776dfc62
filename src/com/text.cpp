#include "com/text.h"

#include "automation/runtime_error.h"
#include "automation/wide_text.h"

namespace mirelo::com {

std::string TextOf(const OLECHAR* text) { return text == nullptr ? std::string() : NarrowText(text); }

BSTR NewText(std::string_view text) {
  const std::wstring wide = WideText(text);
  const BSTR made = ::SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (made == nullptr) throw Errors::OutOfMemory();
  return made;
}

}  // namespace mirelo::com
