#pragma once

#include <com/sun/star/uno/Any.hxx>

#include "automation/variant.h"

namespace mirelo::uno {

namespace css = com::sun::star;

// A value as LibreOffice passes it. Objects are their invocations (invocation.h). Arrays there have no
// bounds: one of two dimensions is an array of its rows.
css::uno::Any ToOffice(const Variant& value);

// The value that it stands for. An array starts at 0, one of rows that are equally long at 1 in both
// dimensions, as those of cells do. Error 13 for what the classes have no use for: objects of LibreOffice's
// own, structures.
Variant FromOffice(const css::uno::Any& value);

}  // namespace mirelo::uno
