#pragma once

#include <csignal>

#include <sys/types.h>

namespace mirelo::quotetracker {

// Waits for what ends the program: SIGINT and SIGTERM, where they are not ignored, or the end of the process
// that started it. Made before any other thread, since it keeps those signals from all threads that are made
// later.
class Ending {
 public:
  explicit Ending(bool with_parent);

  void Wait();

 private:
  bool ParentIsGone() const;

  bool with_parent_;
  pid_t parent_;
  sigset_t signals_;
};

}  // namespace mirelo::quotetracker
