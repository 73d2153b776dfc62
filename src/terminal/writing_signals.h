#pragma once

#include <array>
#include <csignal>

namespace mirelo::terminal {

// By these the system ends a program that writes where it cannot: to a reader that has gone, and beyond the
// limit of file sizes (ulimit -f).
inline constexpr std::array kWritingSignals{SIGPIPE, SIGXFSZ};

// From now on such a write fails in place of that, and says why.
void IgnoreWritingSignals();

// To be called by a process that is about to become another program, which would ignore them as well. May be
// called between fork and exec.
void RestoreWritingSignals();

}  // namespace mirelo::terminal
