#include "app/secret_input.h"

#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <string>

#include "adapters/sodium/guarded_memory.h"
#include "automation/runtime_error.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Err;

namespace {

constexpr std::size_t kLongestSecret = 4096;

// Keeps what is typed off the screen. Where the standard input is no terminal there is nothing to keep off.
class NoEcho {
 public:
  NoEcho() : terminal_(::tcgetattr(STDIN_FILENO, &before_) == 0) {
    if (!terminal_) return;
    termios quiet = before_;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &quiet);
  }
  ~NoEcho() {
    if (!terminal_) return;
    ::tcsetattr(STDIN_FILENO, TCSAFLUSH, &before_);
    Err() << "\n";
  }
  NoEcho(const NoEcho&) = delete;
  NoEcho& operator=(const NoEcho&) = delete;

 private:
  termios before_{};
  bool terminal_;
};

// False at the end of the input.
bool ReadByte(char* byte) {
  for (;;) {
    const auto count = ::read(STDIN_FILENO, byte, 1);
    if (count >= 0 || errno != EINTR) return count == 1;
  }
}

}  // namespace

host::Secret Ask(const char* what) {
  if (::isatty(STDIN_FILENO) == 1) {
    Err() << what << ": ";
    Err().Flush();
  }
  // Handed on as it is: what copies memory leaves it in registers, which are put on the stack at times.
  host::Secret line = sodium::MakeGuarded(kLongestSecret + 1);  // with the line's end
  std::size_t size = 0;
  for (; ReadByte(line.data() + size) && line.data()[size] != '\n'; ++size) {
    if (size == kLongestSecret) throw RuntimeError(5, std::string(what) + " is too long");
  }
  if (size == 0) throw RuntimeError(5, std::string(what) + " is missing");
  if (line.data()[size - 1] == '\r') --size;
  line.Shorten(size);
  return line;
}

host::Secret AskInSecret(const char* what) {
  const NoEcho no_echo;
  return Ask(what);
}

}  // namespace mirelo::app
