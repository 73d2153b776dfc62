#pragma once

#include <array>
#include <csignal>

namespace mirelo::terminal {

// The signals by which the system ends a program that writes where it cannot: to a reader that has gone, or
// beyond the limit of file sizes (ulimit -f).
inline constexpr std::array kWritingSignals{SIGPIPE, SIGXFSZ};

// Ignores these signals from now on: such a write fails instead, and errno says why.
void IgnoreWritingSignals();

// Undoes IgnoreWritingSignals in a process that is about to become another program, which would inherit it.
// May be called between fork and exec.
void RestoreWritingSignals();

}  // namespace mirelo::terminal
