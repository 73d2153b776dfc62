#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace mirelo::quotetracker {

// The program quotetracker, started with some arguments. It is killed at the end if it still runs. Reading
// waits for ten seconds at most and then raises std::runtime_error.
class StartedProgram {
 public:
  explicit StartedProgram(const std::vector<std::string>& arguments);
  StartedProgram(StartedProgram&& other) noexcept;
  StartedProgram& operator=(StartedProgram&&) = delete;
  ~StartedProgram();

  std::string ReadLine();  // of its output, without the line's end
  std::string AllOutput() { return ReadAll(output_); }
  std::string AllErrors() { return ReadAll(errors_); }

  void Signal(int signal) const;
  int ExitCode();  // waits for the end; -1 when a signal ended it

  // The number at the end of a line such as "HTTP port 1234".
  static std::uint16_t PortOf(const std::string& line);

  // Starts the program below a process that ends when the program has said something, and gives its output.
  static int StartBelowAParentThatLeaves(const std::vector<std::string>& arguments);
  // What comes from a descriptor up to its end.
  static std::string ReadAll(int descriptor);

 private:
  pid_t process_ = -1;
  int output_ = -1;
  int errors_ = -1;
};

}  // namespace mirelo::quotetracker
