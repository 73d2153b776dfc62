#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <fstream>
#include <iterator>
#include <memory>
#include <rtl/bootstrap.hxx>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "calc/office_of_tests.h"
#include "support/office_profile.h"
#include "support/temp_directory.h"

namespace mirelo::testing {

namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

constexpr auto kPatience = std::chrono::seconds(60);
constexpr auto kPatienceAtTheEnd = std::chrono::seconds(10);
constexpr auto kPause = std::chrono::milliseconds(20);
constexpr int kStartedForItsProfile = 81;  // the office wants to be started again

rtl::OUString Text(const std::string& text) {
  return {text.data(), static_cast<sal_Int32>(text.size()), RTL_TEXTENCODING_UTF8};
}

// This process's own: it only carries calls.
Reference<css::uno::XComponentContext> LocalContext() {
  // Without the descriptions of what is called, a call would end this process.
  rtl::Bootstrap::set("URE_MORE_TYPES", Text("file://" MIRELO_OFFICE "/program/types/offapi.rdb"));
  return cppu::defaultBootstrap_InitialComponentContext();
}

// An office with a profile of its own, in a process of its own: what ends it ends no test program.
class OfficeProcess {
 public:
  OfficeProcess() : pipe_("mirelo" + std::to_string(::getpid())) {
    PrepareOfficeProfile(folder_ / "profile");
    Start();
    Connect();
  }
  ~OfficeProcess() { End(); }
  OfficeProcess(const OfficeProcess&) = delete;
  OfficeProcess& operator=(const OfficeProcess&) = delete;

  const Reference<css::uno::XComponentContext>& Context() const { return context_; }

  bool End();

 private:
  void Start();
  void Connect();
  bool HasEnded();
  std::string Log() const;

  TempDirectory folder_;
  std::string pipe_;
  pid_t process_ = -1;
  int status_ = 0;
  Reference<css::uno::XComponentContext> context_;
};

void OfficeProcess::Start() {
  std::vector<std::string> words{MIRELO_OFFICE "/program/soffice.bin",
                                 "--headless",
                                 "--norestore",
                                 "--nologo",
                                 "--nodefault",
                                 "--nolockcheck",
                                 "--accept=pipe,name=" + pipe_ + ";urp;",
                                 "-env:UserInstallation=file://" + (folder_ / "profile").string()};
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  std::string home = "HOME=" + folder_.path().string();
  std::string windows = "SAL_USE_VCLPLUGIN=svp";
  std::string path = "PATH=/usr/bin:/bin";
  char* environment[] = {home.data(), windows.data(), path.data(), nullptr};

  posix_spawn_file_actions_t files;
  ::posix_spawn_file_actions_init(&files);
  const std::string log = (folder_ / "log").string();
  ::posix_spawn_file_actions_addopen(&files, 0, "/dev/null", O_RDONLY, 0);
  ::posix_spawn_file_actions_addopen(&files, 1, log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
  ::posix_spawn_file_actions_adddup2(&files, 1, 2);
  const int error = ::posix_spawn(&process_, arguments[0], &files, nullptr, arguments.data(), environment);
  ::posix_spawn_file_actions_destroy(&files);
  if (error != 0) throw std::system_error(error, std::generic_category(), "posix_spawn");
}

void OfficeProcess::Connect() {
  const auto resolver = css::bridge::UnoUrlResolver::create(LocalContext());
  const auto until = std::chrono::steady_clock::now() + kPatience;
  for (;;) {
    try {
      context_.set(resolver->resolve(Text("uno:pipe,name=" + pipe_ + ";urp;StarOffice.ComponentContext")),
                   UNO_QUERY_THROW);
      return;
    } catch (const css::connection::NoConnectException&) {
    } catch (const css::lang::DisposedException&) {  // it was about to be started again
    }
    if (HasEnded()) {
      if (!WIFEXITED(status_) || WEXITSTATUS(status_) != kStartedForItsProfile)
        throw std::runtime_error("the office ended\n" + Log());
      Start();
    }
    if (std::chrono::steady_clock::now() > until) {
      End();
      throw std::runtime_error("the office is not to be spoken to\n" + Log());
    }
    std::this_thread::sleep_for(kPause);
  }
}

bool OfficeProcess::HasEnded() {
  if (process_ > 0 && ::waitpid(process_, &status_, WNOHANG) == process_) process_ = -1;
  return process_ <= 0;
}

bool OfficeProcess::End() {
  if (process_ <= 0) return false;
  try {
    if (context_.is()) css::frame::Desktop::create(context_)->terminate();
  } catch (const css::uno::Exception&) {  // it is ending, or gone
  }
  context_.clear();
  const auto until = std::chrono::steady_clock::now() + kPatienceAtTheEnd;
  while (!HasEnded() && std::chrono::steady_clock::now() < until) std::this_thread::sleep_for(kPause);
  if (HasEnded()) return WIFEXITED(status_) && WEXITSTATUS(status_) == 0;
  ::kill(process_, SIGKILL);
  ::waitpid(process_, &status_, 0);
  process_ = -1;
  return false;
}

std::string OfficeProcess::Log() const {
  std::ifstream log(folder_ / "log");
  return {std::istreambuf_iterator<char>(log), {}};
}

std::unique_ptr<OfficeProcess>& Running() {
  static std::unique_ptr<OfficeProcess> running;
  return running;
}

}  // namespace

const Reference<css::uno::XComponentContext>& OfficeOfTests() {
  if (Running() == nullptr) Running() = std::make_unique<OfficeProcess>();
  return Running()->Context();
}

bool EndOfficeOfTests() {
  const bool is_well = Running() == nullptr || Running()->End();
  Running().reset();
  return is_well;
}

}  // namespace mirelo::testing
