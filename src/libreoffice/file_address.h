#pragma once

#include <osl/file.hxx>
#include <rtl/ustring.hxx>

#include <filesystem>

#include "uno/text.h"

namespace mirelo::libreoffice {

// The address by which the office knows a file.
inline rtl::OUString AddressOf(const std::filesystem::path& file) {
  rtl::OUString address;
  osl::FileBase::getFileURLFromSystemPath(uno::OfficeText(std::filesystem::absolute(file).string()), address);
  return address;
}

}  // namespace mirelo::libreoffice
