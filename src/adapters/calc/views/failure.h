#pragma once

#include <com/sun/star/uno/Exception.hpp>

#include "adapters/calc/objects/office_text.h"
#include "automation/runtime_error.h"

namespace mirelo::calc {

// What failed in the office's toolkit, as the classes know errors.
inline RuntimeError ToolkitFailed(const com::sun::star::uno::Exception& failure) {
  return RuntimeError(440, TextOf(failure.Message), "LibreOffice");
}

}  // namespace mirelo::calc
