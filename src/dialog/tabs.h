#pragma once

#include <cstdint>

namespace mirelo {

// The settings dialog's tabs, from the left.
inline constexpr std::int32_t kTickersTab = 0;
inline constexpr std::int32_t kSettingsTab = 1;
inline constexpr std::int32_t kChartingTab = 2;
inline constexpr std::int32_t kFieldsTab = 3;

}  // namespace mirelo
