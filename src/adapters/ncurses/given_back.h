#pragma once

#include <string>

namespace mirelo::ncurses {

// Lets a terminal go on with its output, which a person may have stopped by Ctrl-S: who writes there would
// wait for Ctrl-Q. May be called in a handler of signals.
void ResumeOutput(int descriptor);

// Restores a terminal when the program ends without unwinding: by a signal that is not ignored, or by
// exit(3). It is made before the terminal is changed, and remembers its modes; with its end nothing is
// restored any more.
class GivenBack {
 public:
  // `descriptor` is of the terminal, and outlives this.
  explicit GivenBack(int descriptor);
  ~GivenBack();
  GivenBack(const GivenBack&) = delete;
  GivenBack& operator=(const GivenBack&) = delete;

  // Begins to catch these ends. To be called once ncurses knows the kind of the terminal, whose control
  // sequences are looked up here.
  void Arm();
};

}  // namespace mirelo::ncurses
