#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace mirelo::testing {

// Runs `act`, which returns an exit status, in a process of its own, whose limits and rights it may change at
// will.
template <class Act>
pid_t StartChild(Act&& act) {
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no child process");
  if (child == 0) {
    int status = 125;
    try {
      status = act();
    } catch (...) {
    }
    _exit(status);
  }
  return child;
}

// The exit status of a child, or 1000 plus the number of the signal that ended it.
inline int StatusOfChild(pid_t child) {
  int status = 0;
  if (waitpid(child, &status, 0) != child) throw std::runtime_error("the child is lost");
  return WIFSIGNALED(status) ? 1000 + WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace mirelo::testing
