#pragma once

#include <cstddef>

#include "host/secret.h"

namespace mirelo::sodium {

// Memory for a text of that size, to be filled by the caller: between pages that nobody may touch, kept from
// being swapped where the system grants it, in no core dump, and wiped when it is let go of. Error 7 when
// there is none.
host::Secret MakeGuarded(std::size_t size);

}  // namespace mirelo::sodium
