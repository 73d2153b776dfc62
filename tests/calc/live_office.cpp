#include "calc/live_office.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/table/XTableCharts.hpp>
#include <com/sun/star/table/XTableChartsSupplier.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <fstream>
#include <iterator>
#include <memory>
#include <rtl/bootstrap.hxx>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace mirelo::testing {

namespace {

using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

constexpr auto kPatience = std::chrono::seconds(60);
constexpr auto kPause = std::chrono::milliseconds(20);
constexpr int kStartedForItsProfile = 81;  // the office wants to be started again

std::unique_ptr<LiveOffice, void (*)(LiveOffice*)>& Running() {
  static std::unique_ptr<LiveOffice, void (*)(LiveOffice*)> running(nullptr, [](LiveOffice*) {});
  return running;
}

rtl::OUString Text(const std::string& text) {
  return {text.data(), static_cast<sal_Int32>(text.size()), RTL_TEXTENCODING_UTF8};
}

// This process's own: it only carries calls.
Reference<css::uno::XComponentContext> LocalContext() {
  static const Reference<css::uno::XComponentContext> context = [] {
    // Without the descriptions of what is called, a call would end this process.
    rtl::Bootstrap::set("URE_MORE_TYPES", Text("file://" MIRELO_OFFICE "/program/types/offapi.rdb"));
    return cppu::defaultBootstrap_InitialComponentContext();
  }();
  return context;
}

}  // namespace

LiveOffice& LiveOffice::Get() {
  static LiveOffice* office = nullptr;
  if (office == nullptr) {
    office = new LiveOffice();
    Running() = {office, [](LiveOffice* ended) { delete ended; }};
  }
  if (Running() == nullptr) throw std::runtime_error("the office was ended before");
  return *office;
}

bool LiveOffice::End() {
  if (Running() == nullptr) return true;
  const bool well = Running()->Finish();
  Running().reset();
  return well;
}

LiveOffice::LiveOffice() : pipe_("mirelo" + std::to_string(::getpid())) {
  Start();
  try {
    Connect();
  } catch (...) {
    Finish();
    throw;
  }
}

LiveOffice::~LiveOffice() { Finish(); }

void LiveOffice::Start() {
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

void LiveOffice::Connect() {
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
    if (std::chrono::steady_clock::now() > until)
      throw std::runtime_error("the office is not to be spoken to\n" + Log());
    std::this_thread::sleep_for(kPause);
  }
}

LiveOffice::Document LiveOffice::NewDocument() {
  Close();
  document_ = Load();
  return document_;
}

LiveOffice::Document LiveOffice::AnotherDocument() { return others_.emplace_back(Load()); }

LiveOffice::Document LiveOffice::Load() const {
  const auto desktop = css::frame::Desktop::create(context_);
  return {desktop->loadComponentFromURL("private:factory/scalc", "_blank", 0, {}), UNO_QUERY_THROW};
}

LiveOffice::Document LiveOffice::EmptyDocument() {
  if (!others_.empty() || !document_.is() || !Empty()) return NewDocument();
  return document_;
}

// A new sheet in place of all others. Calc does not outlive the removal of one with charts.
bool LiveOffice::Empty() {
  try {
    const auto sheets = document_->getSheets();
    const auto names = sheets->getElementNames();
    for (const rtl::OUString& name : names) {
      const Reference<css::table::XTableChartsSupplier> sheet(sheets->getByName(name), UNO_QUERY_THROW);
      if (sheet->getCharts()->getElementNames().hasElements()) return false;
    }
    sheets->insertNewByName("New", 0);
    for (const rtl::OUString& name : names) sheets->removeByName(name);
    Reference<css::container::XNamed>(sheets->getByName("New"), UNO_QUERY_THROW)->setName("Sheet1");
    return true;
  } catch (const css::uno::Exception&) {  // a test closed it, or protected it
    return false;
  }
}

void LiveOffice::Close() {
  if (document_.is()) others_.push_back(std::exchange(document_, Document()));
  for (const Document& document : std::exchange(others_, {})) {
    const Reference<css::util::XCloseable> closing(document, UNO_QUERY_THROW);
    try {
      closing->close(true);
    } catch (const css::lang::DisposedException&) {  // a test closed it
    }
  }
}

bool LiveOffice::HasEnded() {
  if (process_ > 0 && ::waitpid(process_, &status_, WNOHANG) == process_) process_ = -1;
  return process_ <= 0;
}

bool LiveOffice::Finish() {
  if (process_ <= 0) return false;
  try {
    if (context_.is()) {
      Close();
      css::frame::Desktop::create(context_)->terminate();
    }
  } catch (const css::uno::Exception&) {  // it is ending, or gone
  }
  context_.clear();
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (!HasEnded() && std::chrono::steady_clock::now() < until) std::this_thread::sleep_for(kPause);
  if (HasEnded()) return WIFEXITED(status_) && WEXITSTATUS(status_) == 0;
  ::kill(process_, SIGKILL);
  ::waitpid(process_, &status_, 0);
  process_ = -1;
  return false;
}

std::string LiveOffice::Log() const {
  std::ifstream log(folder_ / "log");
  return {std::istreambuf_iterator<char>(log), {}};
}

}  // namespace mirelo::testing
