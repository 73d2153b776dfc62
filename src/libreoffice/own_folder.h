#pragma once

#include <rtl/ustring.hxx>

namespace mirelo::libreoffice {

// The address of the folder that this library lies in: the extension's, as it was unpacked.
rtl::OUString OwnFolder();

}  // namespace mirelo::libreoffice
