#include "adapters/qt/application.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <cerrno>
#include <clocale>
#include <cstdlib>

#include "terminal/standard_streams.h"

namespace mirelo::qt {

namespace {

constexpr unsigned kPatience = 15;  // seconds that a screen may take to answer

// What Qt has to say, without what is no news: it is content with any encoding of texts and makes itself a
// folder for a session that has none.
void Tell(QtMsgType, const QMessageLogContext&, const QString& text) {
  for (const char* usual : {"Detected locale ", "QStandardPaths: "}) {
    if (text.startsWith(QLatin1String(usual))) return;
  }
  terminal::Err() << text.toStdString() << "\n";
}

// Qt sets the locale of the whole program to the person's. Letters may stay so; numbers and dates are ours.
class KeptLocale {
 public:
  KeptLocale() : former_(std::setlocale(LC_ALL, nullptr)) {}
  ~KeptLocale() {
    const std::string letters = std::setlocale(LC_CTYPE, nullptr);
    std::setlocale(LC_ALL, former_.c_str());
    std::setlocale(LC_CTYPE, letters.c_str());
  }
  KeptLocale(const KeptLocale&) = delete;
  KeptLocale& operator=(const KeptLocale&) = delete;

 private:
  std::string former_;
};

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

// Never returns: Qt ends the process, in one way or the other.
[[noreturn]] void StartQtAndEnd() {
  const rlimit no_core{0, 0};
  ::setrlimit(RLIMIT_CORE, &no_core);
  const int nowhere = ::open("/dev/null", O_RDWR | O_CLOEXEC);
  ::dup2(nowhere, STDOUT_FILENO);
  ::dup2(nowhere, STDERR_FILENO);
  ::alarm(kPatience);
  int count = 1;
  char program[] = "mirelo";
  char* arguments[] = {program, nullptr};
  const QGuiApplication application(count, arguments);
  ::_exit(0);
}

bool QtCanStart() {
  const pid_t child = ::fork();
  if (child < 0) return true;  // then it has to be tried for good
  if (child == 0) StartQtAndEnd();
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

Application::Application() {
  qInstallMessageHandler(Tell);
  const KeptLocale locale;
  application_ = std::make_unique<QApplication>(argument_count_, arguments_);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  QGuiApplication::setDesktopFileName(QLatin1String("mirelo"));
}

Application::~Application() = default;

std::string WhyNoWindows() {
  const bool chosen = IsSet("QT_QPA_PLATFORM");
  if (!chosen && !IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY"))
    return "there is no screen: neither DISPLAY nor WAYLAND_DISPLAY is set";
  if (QtCanStart()) return "";
  for (const char* variable : {"QT_QPA_PLATFORM", "WAYLAND_DISPLAY", "DISPLAY"}) {
    if (IsSet(variable))
      return "the screen cannot be reached: " + std::string(variable) + " is \"" + std::getenv(variable) +
             "\"";
  }
  return "";
}

}  // namespace mirelo::qt
