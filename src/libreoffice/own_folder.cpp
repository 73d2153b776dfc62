#include "libreoffice/own_folder.h"

#include <osl/module.h>

namespace mirelo::libreoffice {

rtl::OUString OwnFolder() {
  rtl::OUString library;
  osl_getModuleURLFromFunctionAddress(reinterpret_cast<oslGenericFunction>(&OwnFolder), &library.pData);
  return library.copy(0, library.lastIndexOf('/'));
}

}  // namespace mirelo::libreoffice
