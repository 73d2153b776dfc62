#pragma once

#include <array>
#include <string_view>

namespace mirelo::quotetracker {

using Md5Digest = std::array<unsigned char, 16>;

// By the machine's own library, which is of another maker than the client's. Raises std::runtime_error where
// that computes none.
Md5Digest Md5Of(std::string_view bytes);

}  // namespace mirelo::quotetracker
