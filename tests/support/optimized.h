#pragma once

namespace mirelo::testing {

// Whether this build is optimised, as what ships is: there a long run is cheap.
#ifdef NDEBUG
inline constexpr bool kIsOptimized = true;
#else
inline constexpr bool kIsOptimized = false;
#endif

}  // namespace mirelo::testing
