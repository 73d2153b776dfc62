#pragma once

#include <array>
#include <csignal>

namespace mirelo::terminal {

// By which a person, or the system, asks a program to end: Ctrl-C, kill, and the end of the terminal.
inline constexpr std::array kStopSignals{SIGINT, SIGTERM, SIGHUP};

// Whether whoever started this process, or the process itself, has it ignore the signal.
bool IsIgnored(int signal);

// Those of them that are for this process to see: all but those that whoever started it has it ignore, as
// nohup does with the end of the terminal, and a script with Ctrl-C for what it starts in the background. A
// signal that is held back would be seen although it is ignored.
sigset_t SeenStopSignals();

}  // namespace mirelo::terminal
