#include "support/child_process.h"

#include <linux/capability.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace mirelo::testing {

namespace {

struct Pipe {
  Pipe() {
    int ends[2];
    if (::pipe(ends) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
    reading = ends[0];
    writing = ends[1];
  }
  int reading;
  int writing;
};

bool ReadNumber(int pipe, std::int32_t& number) {
  return ::read(pipe, &number, sizeof number) == sizeof number;
}

bool WriteNumber(int pipe, std::int32_t number) {
  return ::write(pipe, &number, sizeof number) == sizeof number;
}

int StatusOf(const std::function<void(const ChildProcess::Test&)>& body, const ChildProcess::Test& test) {
  try {
    body(test);
    return 0;
  } catch (...) {
    return 1;
  }
}

}  // namespace

void ChildProcess::Test::Report(std::int32_t number) const {
  if (!WriteNumber(to_test_, number)) ::_exit(2);
}

bool ChildProcess::Test::Await(std::int32_t& number) const { return ReadNumber(from_test_, number); }

ChildProcess::ChildProcess(const std::function<void(const Test&)>& body) {
  const Pipe to_child;
  const Pipe from_child;
  process_ = ::fork();
  if (process_ < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (process_ == 0) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::close(to_child.writing);
    ::close(from_child.reading);
    ::_exit(StatusOf(body, Test(to_child.reading, from_child.writing)));
  }
  ::close(to_child.reading);
  ::close(from_child.writing);
  to_child_ = to_child.writing;
  from_child_ = from_child.reading;
}

ChildProcess::~ChildProcess() {
  Kill();
  Finish();
  ::close(to_child_);
  ::close(from_child_);
}

void ChildProcess::Send(std::int32_t number) const {
  if (!WriteNumber(to_child_, number)) throw std::system_error(errno, std::generic_category(), "write");
}

bool ChildProcess::Read(std::int32_t& number) const { return ReadNumber(from_child_, number); }

void ChildProcess::Kill() const {
  if (process_ > 0) ::kill(process_, SIGKILL);
}

void DropRightsOfRoot() {
  __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
  __user_cap_data_struct none[2]{};
  if (::syscall(SYS_capset, &header, none) != 0) {
    throw std::system_error(errno, std::generic_category(), "capset");
  }
}

bool ChildProcess::Finish() {
  if (process_ <= 0) return false;
  int status = 0;
  ::waitpid(process_, &status, 0);
  process_ = -1;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace mirelo::testing
