#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/poll/descriptor.h"
#include "app/live/live_model.h"
#include "day/quote_rows.h"
#include "host/message_loop.h"

namespace mirelo::ncurses {
class Screen;
}

namespace mirelo::app {

// A working day on the screen of a terminal: it is painted some times a second, and follows the keys. While
// it stands, what is told on the standard error stream waits for its end, where that is a terminal.
class LiveScreen {
 public:
  struct Wishes {
    std::function<void()> end;   // the person has asked for the day's end
    std::function<void()> save;  // and for a save now
  };
  using About = std::function<std::vector<std::string>()>;

  // Nothing where the standard output is no terminal that can be used so. All must outlive it; `about` makes
  // the lines below the table anew each time.
  static std::unique_ptr<LiveScreen> Open(host::MessageLoop& loop, LiveModel model,
                                          const day::QuoteRows& rows, About about, Wishes wishes);
  ~LiveScreen();
  LiveScreen(const LiveScreen&) = delete;
  LiveScreen& operator=(const LiveScreen&) = delete;

 private:
  LiveScreen(std::unique_ptr<ncurses::Screen> screen, host::MessageLoop& loop, LiveModel model,
             const day::QuoteRows& rows, About about, Wishes wishes);
  void Paint();
  void PaintLater();
  void FollowKeys();
  void FollowSignals();

  std::unique_ptr<ncurses::Screen> screen_;
  host::MessageLoop& loop_;
  const day::QuoteRows& rows_;
  About about_;
  Wishes wishes_;
  LiveModel model_;
  poll::Descriptor signals_;
  host::MessageLoop::Token timer_ = 0;
  host::MessageLoop::Token keys_watch_ = 0;
  host::MessageLoop::Token signals_watch_ = 0;
};

}  // namespace mirelo::app
