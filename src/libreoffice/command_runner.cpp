#include "libreoffice/command_runner.h"

#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <com/sun/star/uno/Exception.hpp>
#include <csignal>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/calc/office_loop.h"
#include "app/child_process.h"
#include "app/mirelo_program.h"
#include "app/options.h"
#include "app/run_program.h"
#include "automation/runtime_error.h"
#include "libreoffice/documents/office_documents.h"
#include "libreoffice/errand/lines.h"
#include "libreoffice/machine.h"
#include "libreoffice/office_process.h"
#include "linux/linux_host.h"
#include "terminal/standard_streams.h"
#include "uno/errors.h"

namespace mirelo::libreoffice {

namespace {

using Context = css::uno::Reference<css::uno::XComponentContext>;

constexpr std::array kSignalsOfPeople{SIGINT, SIGTERM, SIGHUP, SIGWINCH};

// The main thread is the program: there a signal waits for whoever has asked for it, and does what is usual
// where nobody has. Some threads of the office hold none back.
extern "C" void HandToMainThread(int signal) {
  const bool is_there = ::gettid() == ::getpid();
  if (is_there && signal == SIGWINCH) return;
  if (is_there) std::signal(signal, SIG_DFL);
  ::syscall(SYS_tgkill, ::getpid(), ::getpid(), signal);
}

// In place of the office's own way with them, which is to save what it has.
void TakeSignals() {
  sigset_t held;
  sigemptyset(&held);
  for (const int each : kSignalsOfPeople) {
    struct sigaction action {};
    action.sa_handler = HandToMainThread;
    ::sigaction(each, &action, nullptr);
    sigaddset(&held, each);
  }
  std::signal(SIGTSTP, SIG_IGN);  // the shell waits for the program that waits for this office
  ::pthread_sigmask(SIG_UNBLOCK, &held, nullptr);
}

void TakeStream(int from, int standard) {
  ::dup2(from, standard);
  ::close(from);
}

// What fails outside of every call goes where it would in the program.
void TellOfFailure(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (...) {
    terminal::Err() << "mirelo: " << uno::ErrorInHand().Description() << "\n";
  }
}

app::GlobalOptions Around(const Context& context) {
  app::GlobalOptions around;
  around.spreadsheets = [context](LinuxHost& host) -> std::unique_ptr<host::Documents> {
    auto loop = std::make_unique<calc::OfficeLoop>(OfficeOf(context), TellOfFailure);
    Machine::Lend(host, *loop);
    host.RunOn(std::move(loop));
    return std::make_unique<OfficeDocuments>(context);
  };
  return around;
}

int RunWords(const Context& context, std::vector<std::string> words) {
  std::string name = "mirelo";
  std::vector<char*> arguments{name.data()};
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  try {
    return app::MireloProgram(Around(context)).Run(static_cast<int>(words.size()) + 1, arguments.data());
  } catch (const css::uno::Exception& failure) {
    throw uno::FromOffice(failure);
  }
}

[[noreturn]] void Run(const Context& context, int line, const CommandLine& command) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);  // whoever has started the office is the program to all others
  TakeSignals();
  TakeStream(command.output, STDOUT_FILENO);
  TakeStream(command.errors, STDERR_FILENO);
  app::SetProgramFolder(command.programs);
  const Lines said(line);
  said.Send(std::string(kCommandBegins));
  const int code = app::RunProgram([&] { return RunWords(context, command.words); });
  said.Send(std::string(kCommandIsOver));
  ::_exit(code);
}

}  // namespace

void RunCommandLater(const Context& context, int line, CommandLine command) {
  OfficeOf(context)->Post([context, line, command = std::move(command)] { Run(context, line, command); });
}

}  // namespace mirelo::libreoffice
