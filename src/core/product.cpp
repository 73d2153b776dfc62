#include "core/product.h"

namespace mirelo {

std::string_view ProductVersion() { return MIRELO_VERSION; }

}  // namespace mirelo
