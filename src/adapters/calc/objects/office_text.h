#pragma once

#include <rtl/string.hxx>
#include <rtl/ustring.hxx>
#include <string>
#include <string_view>

namespace mirelo::calc {

// Texts of the office are UTF-16, ours are UTF-8. What is no valid text gets replacement characters.
inline rtl::OUString OfficeText(std::string_view text) {
  return {text.data(), static_cast<sal_Int32>(text.size()), RTL_TEXTENCODING_UTF8};
}
inline std::string TextOf(const rtl::OUString& text) {
  const rtl::OString bytes = rtl::OUStringToOString(text, RTL_TEXTENCODING_UTF8);
  return {bytes.getStr(), static_cast<std::size_t>(bytes.getLength())};
}

}  // namespace mirelo::calc
