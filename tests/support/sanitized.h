#pragma once

namespace mirelo::testing {

// Whether the address sanitizer watches, which takes time and address space, and keeps freed memory for a
// while.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kIsSanitized = true;
#elif defined(__has_feature)
inline constexpr bool kIsSanitized = __has_feature(address_sanitizer);
#else
inline constexpr bool kIsSanitized = false;
#endif

}  // namespace mirelo::testing
