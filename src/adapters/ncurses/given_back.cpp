#include "adapters/ncurses/given_back.h"

#include <curses.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "terminal/caught_stops.h"
#include "terminal/stop_signals.h"

namespace mirelo::ncurses {

namespace {

// Those that end a program, and of which some core or another program may come behind.
constexpr std::array kEndingSignals{SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGABRT, SIGSEGV,
                                    SIGBUS, SIGFPE,  SIGILL, SIGALRM, SIGSYS,  SIGXCPU};

// All that a handler of signals needs, made before: it may allocate nothing.
struct {
  int descriptor = -1;  // -1 while nothing is to be given back
  pid_t process = 0;    // a copy of the process has the same memory, and not the same terminal
  termios modes{};
  std::array<char, 256> leaving{};
  std::size_t size = 0;
} former;

void GiveBackNow() {
  if (former.descriptor < 0 || former.process != ::getpid()) return;
  ResumeOutput(former.descriptor);
  [[maybe_unused]] const ssize_t count = ::write(former.descriptor, former.leaving.data(), former.size);
  ::tcsetattr(former.descriptor, TCSADRAIN, &former.modes);
  former.descriptor = -1;
}

void EndBySignal(int signal) {
  GiveBackNow();
  std::signal(signal, SIG_DFL);
  sigset_t own;
  sigemptyset(&own);
  sigaddset(&own, signal);
  ::kill(::getpid(), signal);
  ::sigprocmask(SIG_UNBLOCK, &own, nullptr);
}

void Append(const char* capability) {
  const char* text = ::tigetstr(capability);
  if (text == nullptr || reinterpret_cast<std::intptr_t>(text) == -1) return;  // -1: no capability of texts
  const std::size_t length = std::strlen(text);
  if (former.size + length > former.leaving.size()) return;
  std::memcpy(former.leaving.data() + former.size, text, length);
  former.size += length;
}

void GiveBackAtExit() {
  static const bool once = std::atexit(GiveBackNow) == 0;
  static_cast<void>(once);
}

}  // namespace

// The system restarts only what was stopped by the same call, and then also what a person has stopped.
void ResumeOutput(int descriptor) {
  ::tcflow(descriptor, TCOOFF);
  ::tcflow(descriptor, TCOON);
}

GivenBack::GivenBack(int descriptor) {
  former.process = ::getpid();
  former.size = 0;
  ::tcgetattr(descriptor, &former.modes);
  former.descriptor = descriptor;
}

GivenBack::~GivenBack() {
  former.descriptor = -1;
  terminal::EndStopsWith(SIG_DFL);
  for (const int signal : kEndingSignals) {
    struct sigaction now {};
    ::sigaction(signal, nullptr, &now);
    if (now.sa_handler == EndBySignal) std::signal(signal, SIG_DFL);
  }
}

// Padding, which these texts of capabilities may have on old terminals, is no harm there.
void GivenBack::Arm() {
  for (const char* capability : {"sgr0", "cnorm", "rmkx", "rmcup"}) Append(capability);
  for (const int signal : kEndingSignals) {
    if (!terminal::IsIgnored(signal) && !terminal::IsCaught(signal)) std::signal(signal, EndBySignal);
  }
  terminal::EndStopsWith(EndBySignal);
  // Where the library has its own handlers, they would stop in the midst of our work.
  if (!terminal::IsIgnored(SIGTSTP)) std::signal(SIGTSTP, SIG_DFL);
  std::signal(SIGWINCH, SIG_DFL);
  GiveBackAtExit();
}

}  // namespace mirelo::ncurses
