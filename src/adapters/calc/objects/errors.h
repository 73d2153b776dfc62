#pragma once

#include <com/sun/star/uno/Exception.hpp>
#include <string>

#include "automation/runtime_error.h"

namespace mirelo::calc {

namespace css = com::sun::star;

// All are error 1004, with a sentence that says what a person can do.

RuntimeError DocumentGone();
RuntimeError SheetGone(const std::string& name);
RuntimeError SheetProtected(const std::string& name);
RuntimeError StructureProtected();
RuntimeError OnlyForReading();

// What the office raised.
RuntimeError Failed(const css::uno::Exception& failure);

}  // namespace mirelo::calc
