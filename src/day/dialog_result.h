#pragma once

#include <cstdint>

namespace mirelo::day {

// What LoadFrmMirelo answers about a dialog that was committed.
inline constexpr std::int32_t kToStream = 77;  // quotes are to be streamed
inline constexpr std::int32_t kToAsk = 78;     // quotes are to be asked for

inline bool IsCommitted(std::int32_t result) { return result == kToStream || result == kToAsk; }

}  // namespace mirelo::day
