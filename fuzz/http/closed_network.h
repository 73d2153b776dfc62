#pragma once

#include <cstdint>

namespace mirelo::fuzz {

// The only port of 127.0.0.1 that this program may connect to. Every other address refuses, and no name is
// resolved: what is fuzzed may redirect to anywhere.
void AllowPort(std::uint16_t port);

}  // namespace mirelo::fuzz
