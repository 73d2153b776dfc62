#pragma once

#include <cstdint>
#include <string_view>

namespace mirelo::host {

// Where the program writes down what it does, for somebody who asks later. It is not the terminal, and no
// person is told by it.
class Log {
 public:
  // From what helps to find out, to what should not be.
  enum class Level : std::uint8_t { Debug, Info, Warning, Error };

  virtual ~Log() = default;

  // Writes down a line: some text without its end of line. Characters that a terminal would obey are made
  // visible. Raises nothing: a log that fails ends no work.
  virtual void Write(Level level, std::string_view line) noexcept = 0;
};

}  // namespace mirelo::host
