#include "support/recording_system.h"

namespace mirelo::testing {

std::optional<std::int32_t> RecordingSystem::GetVersionExA(std::int32_t record_size) {
  version_record_sizes.push_back(record_size);
  if (failing_record_sizes.contains(record_size)) return std::nullopt;
  return platform;
}

}  // namespace mirelo::testing
