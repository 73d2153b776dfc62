#pragma once

#include <memory>
#include <vector>

#include "terminal/key.h"
#include "terminal/picture.h"

namespace mirelo::ncurses {

// The terminal of the standard output as a screen of text, as long as this exists; what stood there before
// comes back with its end. That is so for every end of the program that can be caught, too, signals and
// exit(3) among them. One may exist at a time.
class Screen {
 public:
  // Null where the standard output is no terminal that can be used as a screen, or where the program runs in
  // the background of its terminal.
  static std::unique_ptr<Screen> Open(bool in_color);
  ~Screen();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  // As it is now: a person may change it at any time.
  terminal::ScreenSize Size();

  // Shows the picture. Only what differs from the one that is shown is written; nothing where the terminal
  // takes no output, as after Ctrl-S: the next picture that it takes is whole.
  void Show(const terminal::Picture& picture);

  // Readable when a key may have been pressed.
  int KeyDescriptor() const;
  // The keys that were pressed since the last call, without waiting.
  std::vector<terminal::Key> Keys();

  // For a process that is stopped (SIGTSTP) and continued: GiveBack restores the terminal before it stops,
  // TakeBack makes it a screen again and draws all anew. After a stop that nobody announced (SIGSTOP)
  // TakeBack alone will do.
  void GiveBack();
  void TakeBack();

 private:
  bool TakesOutput() const;

  struct Terminal;
  explicit Screen(std::unique_ptr<Terminal> terminal);

  std::unique_ptr<Terminal> terminal_;
};

}  // namespace mirelo::ncurses
