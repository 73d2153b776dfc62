#pragma once

#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/XInterface.hpp>
#include <functional>
#include <memory>

#include "automation/variant.h"

namespace mirelo::uno {

namespace css = com::sun::star;

// A value as LibreOffice passes it. Objects are their invocations (invocation.h). Arrays there have no
// bounds: one of two dimensions is an array of its rows.
css::uno::Any ToOffice(const Variant& value);

// The value that it stands for. An array starts at 0, one of rows that are equally long at 1 in both
// dimensions, as those of cells do. Error 13 for what the classes have no use for: structures, and objects of
// LibreOffice's own unless they stand for one of ours (TakeOfficeObjectsFor).
Variant FromOffice(const css::uno::Any& value);

// Which of our objects an object of LibreOffice's own stands for when it is handed in; null for one that
// stands for none. None does until this is called.
using Meaning = std::function<std::shared_ptr<Object>(const css::uno::Reference<css::uno::XInterface>&)>;
void TakeOfficeObjectsFor(Meaning meaning);

}  // namespace mirelo::uno
