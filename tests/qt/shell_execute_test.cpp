// Opening addresses with the desktop's own program, for which a script stands in here.

#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

#include "qt/gui_test.h"
#include "support/temp_directory.h"

namespace mirelo::qt {
namespace {

class Opener : public GuiTest {
 protected:
  Opener() {
    const char* path = std::getenv("PATH");
    path_ = path == nullptr ? "" : path;
    ::setenv("PATH", folder_.path().c_str(), 1);
  }
  ~Opener() override { ::setenv("PATH", path_.c_str(), 1); }

  void Install(const std::string& script) {
    const auto file = folder_.path() / "xdg-open";
    std::ofstream(file) << "#!/bin/sh\n" << script;
    ::chmod(file.c_str(), 0700);
  }

  // What the opener was given; it writes when it runs, which is waited for.
  std::string Given() const {
    const auto file = folder_.path() / "given";
    for (int patience = 20'000; patience > 0; --patience) {
      std::ifstream in(file);
      std::ostringstream text;
      text << in.rdbuf();
      if (!text.str().empty() && text.str().back() == '\n') return text.str();
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return "nothing";
  }
  std::string Note() const {
    const std::string file = (folder_.path() / "given").string();
    return "printf '%s|%s\\n' \"$#\" \"$1\" > " + file + ".new\n/bin/mv " + file + ".new " + file + "\n";
  }

  testing::TempDirectory folder_;
  std::string path_;
};

TEST_F(Opener, GetsTheAddressAsItsOneArgument) {
  const char* addresses[] = {
      "mailto:help@example.com?subject=An%20error&body=a%0Ab",
      "http://127.0.0.1/;touch /tmp/x $(id) `id` 'quoted' \"twice\" & *",
      "a file with blanks",
  };
  for (const char* address : addresses) {
    SCOPED_TRACE(address);
    std::filesystem::remove(folder_.path() / "given");
    Install(Note());
    EXPECT_GT(desktop.ShellExecuteA("open", address), 32);
    EXPECT_EQ(Given(), "1|" + std::string(address) + "\n");
  }
}

TEST_F(Opener, IsNeverGivenAnOption) {
  Install(Note());
  EXPECT_GT(desktop.ShellExecuteA("open", "--help"), 32);
  EXPECT_EQ(Given(), "1|./--help\n");
}

TEST_F(Opener, IsNotWaitedFor) {
  Install("while [ ! -e " + (folder_.path() / "go").string() + " ]; do /bin/sleep 0.01; done\n" + Note());
  EXPECT_GT(desktop.ShellExecuteA("open", "late"), 32);
  EXPECT_FALSE(std::filesystem::exists(folder_.path() / "given"));
  std::ofstream(folder_.path() / "go");
  EXPECT_EQ(Given(), "1|late\n");
}

TEST_F(Opener, HasTheUsualSignals) {
  std::signal(SIGPIPE, SIG_IGN);
  sigset_t held;
  sigemptyset(&held);
  sigaddset(&held, SIGTERM);
  ::sigprocmask(SIG_BLOCK, &held, nullptr);
  const std::string file = (folder_.path() / "given").string();
  Install("/bin/grep -E 'Sig(Blk|Ign)' /proc/self/status > " + file + ".new\n/bin/mv " + file + ".new " +
          file + "\n");
  desktop.ShellExecuteA("open", "address");
  ::sigprocmask(SIG_UNBLOCK, &held, nullptr);
  std::istringstream signals(Given());
  std::string name;
  unsigned long long mask = 1;
  signals >> name >> std::hex >> mask;
  EXPECT_EQ(mask, 0U) << name << " holds back";
  signals >> name >> std::hex >> mask;
  EXPECT_EQ(mask >> (SIGPIPE - 1) & 1, 0U) << name << " ignores";
}

TEST_F(Opener, ThatIsNotThereIsNoProgramForTheAddress) {
  EXPECT_EQ(desktop.ShellExecuteA("open", "mailto:a@example.com"), 31);
}

TEST_F(Opener, IsAskedForNothingElse) {
  Install(Note());
  EXPECT_EQ(desktop.ShellExecuteA("print", "file"), 31);
  EXPECT_EQ(desktop.ShellExecuteA("open", ""), 31);
}

}  // namespace
}  // namespace mirelo::qt
