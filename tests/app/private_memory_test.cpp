// While the programs run, others of the same user cannot look into their memory, and no core of it is dumped:
// the system has one switch for both.

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "support/built_program.h"
#include "support/child_process.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

using Clock = std::chrono::steady_clock;
using Words = std::vector<std::string>;

// Gives up root's rights, some of which let it look into everything, here and in programs that are started
// from here.
void BecomeAsBlindAsOthers() {
  for (int right = 0; right <= CAP_LAST_CAP; ++right) ::prctl(PR_CAPBSET_DROP, right);
  __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
  const std::array<__user_cap_data_struct, 2> none{};
  ::syscall(SYS_capset, &header, none.data());
}

// A program that waits for its standard input, in a home of its own.
class WaitingProgram {
 public:
  WaitingProgram(Words words, const std::filesystem::path& home) {
    std::array<int, 2> input{};
    if (::pipe2(input.data(), O_CLOEXEC) != 0) return;
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    process_ = ::fork();
    if (process_ == 0) {
      ::prctl(PR_SET_PDEATHSIG, SIGKILL);
      ::setenv("HOME", home.c_str(), 1);
      ::setenv("XDG_DATA_HOME", home.c_str(), 1);
      ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
      ::dup2(input[0], STDIN_FILENO);
      ::execv(pointers[0], pointers.data());
      ::_exit(127);
    }
    ::close(input[0]);
    input_ = input[1];
  }
  ~WaitingProgram() {
    ::close(input_);
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
  }
  WaitingProgram(const WaitingProgram&) = delete;
  WaitingProgram& operator=(const WaitingProgram&) = delete;

  bool CanBeLookedInto() const {
    const int memory = ::open(("/proc/" + std::to_string(process_) + "/maps").c_str(), O_RDONLY);
    if (memory >= 0) ::close(memory);
    return memory >= 0;
  }

  bool HasEnded() const {
    siginfo_t ended{};
    return ::waitid(P_PID, static_cast<id_t>(process_), &ended, WEXITED | WNOHANG | WNOWAIT) != 0 ||
           ended.si_pid != 0;
  }

  // Whether it could not be looked into some time after its start, while it ran.
  bool BecomesPrivate() const {
    const auto deadline = Clock::now() + std::chrono::seconds(5);
    while (CanBeLookedInto() && Clock::now() < deadline)
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return !CanBeLookedInto() && !HasEnded();
  }

 private:
  pid_t process_ = -1;
  int input_ = -1;
};

// As seen by a process of the same user that has no more rights than others.
bool BecomesPrivate(const Words& words) {
  const TempDirectory home;
  ChildProcess other([&](const ChildProcess::Test& test) {
    BecomeAsBlindAsOthers();
    const WaitingProgram program(words, home.path());
    test.Report(program.BecomesPrivate() ? 1 : 0);
  });
  std::int32_t answer = -1;
  EXPECT_TRUE(other.Read(answer));
  return answer == 1;
}

TEST(PrivateMemory, IsThatOfThePrograms) {
  EXPECT_TRUE(BecomesPrivate({BuiltProgram("mirelo"), "credentials", "set"}));
  EXPECT_TRUE(BecomesPrivate({BuiltProgram("mirelo-windows"), "dialog"}));
}

// Otherwise the test above could not fail.
TEST(PrivateMemory, IsNotThatOfOtherPrograms) {
  const TempDirectory home;
  ChildProcess other([&](const ChildProcess::Test& test) {
    BecomeAsBlindAsOthers();
    const WaitingProgram program({"/bin/cat"}, home.path());
    test.Report(program.CanBeLookedInto() ? 1 : 0);
  });
  std::int32_t answer = -1;
  ASSERT_TRUE(other.Read(answer));
  EXPECT_EQ(answer, 1);
}

}  // namespace
}  // namespace mirelo::testing
