#pragma once

#ifndef _WIN32
extern "C" [[gnu::weak]] void __asan_init();  // of the address sanitizer's runtime
#endif

namespace mirelo::testing {

// Whether the address sanitizer watches, which takes time and address space, and keeps freed memory for a
// while. It is asked when the program runs: a test's sources may be compiled once for programs that are
// watched and for others.
#ifdef _WIN32
inline constexpr bool kIsSanitized = false;
#else
inline const bool kIsSanitized = &__asan_init != nullptr;
#endif

}  // namespace mirelo::testing
