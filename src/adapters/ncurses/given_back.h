#pragma once

#include <string>

namespace mirelo::ncurses {

// Gives a terminal back when the program ends without unwinding: by a signal whose way nobody has changed, or
// by exit(3). Made before the terminal is changed; with its end nothing is caught any more.
class GivenBack {
 public:
  // `descriptor` is of the terminal, and outlives this.
  explicit GivenBack(int descriptor);
  ~GivenBack();
  GivenBack(const GivenBack&) = delete;
  GivenBack& operator=(const GivenBack&) = delete;

  // From now on; the kind of the terminal is known.
  void Arm();
};

}  // namespace mirelo::ncurses
