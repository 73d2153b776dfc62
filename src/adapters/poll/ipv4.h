#pragma once

#include <array>
#include <cstdint>

namespace mirelo::poll {

// An address of the internet in the order in which it is written: {127, 0, 0, 1}.
using Ipv4 = std::array<std::uint8_t, 4>;

}  // namespace mirelo::poll
