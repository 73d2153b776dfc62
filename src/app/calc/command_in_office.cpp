#include "app/calc/command_in_office.h"

#include <fcntl.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

#include "adapters/poll/descriptor.h"
#include "adapters/poll/poll_loop.h"
#include "app/calc/office_place.h"
#include "app/calc/own_office.h"
#include "app/child_process.h"
#include "app/exit_code.h"
#include "terminal/standard_streams.h"
#include "terminal/stop_signals.h"

namespace mirelo::app {

namespace {

constexpr std::chrono::seconds kFromOverToEnd{15};
constexpr int kEndedBySignal = 128;

bool IsStop(int code) {
  for (const int stop : terminal::kStopSignals) {
    if (code == kEndedBySignal + stop) return true;
  }
  return false;
}

// The signals that stop a program, for one that only hands them on.
class Stops {
 public:
  Stops() {
    ::sigprocmask(SIG_BLOCK, &signals_, &before_);
    descriptor_ = poll::Descriptor::Opened(::signalfd(-1, &signals_, SFD_NONBLOCK | SFD_CLOEXEC));
  }
  ~Stops() { ::sigprocmask(SIG_SETMASK, &before_, nullptr); }
  Stops(const Stops&) = delete;
  Stops& operator=(const Stops&) = delete;

  int Descriptor() const { return descriptor_.Number(); }

  // The one that has come, or 0.
  int Next() const {
    signalfd_siginfo info;
    return ::read(descriptor_.Number(), &info, sizeof info) == sizeof info ? static_cast<int>(info.ssi_signo)
                                                                           : 0;
  }

 private:
  sigset_t signals_ = terminal::SeenStopSignals();
  sigset_t before_{};
  poll::Descriptor descriptor_;
};

poll::Descriptor CopyOf(int stream) {
  constexpr int kBehindTheStandardStreams = 3;
  return poll::Descriptor::Opened(::fcntl(stream, F_DUPFD_CLOEXEC, kBehindTheStandardStreams));
}

}  // namespace

int RunInOffice(const OfficePlace& place, const std::vector<std::string>& words) {
  terminal::Out().Flush();
  poll::PollLoop loop;
  const Stops stops;
  OwnOffice office(loop, place, {.headless = true, .at_terminal = true});
  const poll::Descriptor output = CopyOf(STDOUT_FILENO);
  const poll::Descriptor errors = CopyOf(STDERR_FILENO);
  for (const auto* const stream : {&output, &errors}) office.Keep(stream->Number());
  bool is_over = false;
  office.Said.Subscribe([&](const std::string& text) {
    if (text != libreoffice::kCommandIsOver) return;
    is_over = true;
    office.GiveUpIn(kFromOverToEnd, "LibreOffice did not end");
  });
  const auto watch = loop.Watch(stops.Descriptor(), host::MessageLoop::kRead, [&](unsigned) {
    if (const int stop = stops.Next()) office.Signal(stop);
  });
  libreoffice::Errand errand;
  errand.command = {words, ProgramFolder(), output.Number(), errors.Number()};
  const int code = office.Run(errand);
  loop.Unwatch(watch);
  if (is_over || IsStop(code)) return code;
  office.TellOfEarlyEnd(code, "; what was not saved before is lost");
  return kFailed;
}

}  // namespace mirelo::app
