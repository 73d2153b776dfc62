#pragma once

#include "com/system.h"

#include "automation/variant.h"

namespace mirelo::com {

// An array of that type of elements, with the bounds of ours. Whoever gets it destroys it. Error 7; 13 or 6
// for an element that has no conversion.
SAFEARRAY* ArrayToClient(const VariantArray& array, VARTYPE element = VT_VARIANT);

// The array that a client passes; null, which no client has dimensioned yet, has no elements, and neither has
// one with a dimension of none. Error 13 for one of more dimensions than two.
VariantArray ArrayFromClient(SAFEARRAY* array);

}  // namespace mirelo::com
