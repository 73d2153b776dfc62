#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/log.h"

namespace mirelo::testing {

// A log in memory: its lines as they were written.
class RecordedLog : public host::Log {
 public:
  void Write(Level, std::string_view line) noexcept override { lines.emplace_back(line); }

  std::vector<std::string> lines;
};

}  // namespace mirelo::testing
