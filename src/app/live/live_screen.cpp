#include "app/live/live_screen.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <utility>

#include "adapters/ncurses/screen.h"
#include "terminal/color.h"
#include "terminal/standard_streams.h"
#include "terminal/stop_signals.h"

namespace mirelo::app {

namespace {

constexpr std::chrono::milliseconds kPaintPace{250};

// A new size of the window, Ctrl-Z where it is not ignored, and the way back.
sigset_t ScreenSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGWINCH, SIGCONT}) sigaddset(&signals, signal);
  if (!terminal::IsIgnored(SIGTSTP)) sigaddset(&signals, SIGTSTP);
  return signals;
}

}  // namespace

std::unique_ptr<LiveScreen> LiveScreen::Open(host::MessageLoop& loop, LiveModel model,
                                             const day::QuoteRows& rows, About about, Wishes wishes) {
  terminal::Out().Flush();
  auto screen = ncurses::Screen::Open(terminal::DepthOfOutput() != terminal::ColorDepth::None);
  if (screen == nullptr) return nullptr;
  return std::unique_ptr<LiveScreen>(
      new LiveScreen(std::move(screen), loop, std::move(model), rows, std::move(about), std::move(wishes)));
}

LiveScreen::LiveScreen(std::unique_ptr<ncurses::Screen> screen, host::MessageLoop& loop, LiveModel model,
                       const day::QuoteRows& rows, About about, Wishes wishes)
    : screen_(std::move(screen)),
      loop_(loop),
      rows_(rows),
      about_(std::move(about)),
      wishes_(std::move(wishes)),
      model_(std::move(model)) {
  if (terminal::Err().IsTerminal()) terminal::Err().Hold();
  const sigset_t signals = ScreenSignals();
  ::sigprocmask(SIG_BLOCK, &signals, nullptr);
  signals_ = poll::Descriptor(::signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
  if (signals_.IsOpen()) {
    signals_watch_ =
        loop_.Watch(signals_.Number(), host::MessageLoop::kRead, [this](unsigned) { FollowSignals(); });
  }
  keys_watch_ =
      loop_.Watch(screen_->KeyDescriptor(), host::MessageLoop::kRead, [this](unsigned) { FollowKeys(); });
  Paint();
  PaintLater();
}

LiveScreen::~LiveScreen() {
  loop_.StopTimer(timer_);
  loop_.Unwatch(keys_watch_);
  loop_.Unwatch(signals_watch_);
  const sigset_t signals = ScreenSignals();
  ::sigprocmask(SIG_UNBLOCK, &signals, nullptr);
  screen_.reset();
  terminal::Err().Release();
}

void LiveScreen::Paint() {
  const auto now = std::chrono::steady_clock::now();
  model_.Take(rows_, now);
  screen_->Show(model_.Draw(screen_->Size(), now, about_()));
}

void LiveScreen::PaintLater() {
  timer_ = loop_.StartTimer(kPaintPace, [this] {
    Paint();
    PaintLater();
  });
}

void LiveScreen::FollowKeys() {
  bool saves = false;
  for (const terminal::Key& key : screen_->Keys()) {
    if (model_.Press(key) || key.kind != terminal::Key::Kind::Character) continue;
    if (key.character == 'q') wishes_.end();
    if (key.character == 's') saves = true;
  }
  if (saves) wishes_.save();
  Paint();
}

// The stop is the program's own then, as it would have been without the screen.
void LiveScreen::FollowSignals() {
  signalfd_siginfo info;
  if (::read(signals_.Number(), &info, sizeof info) != sizeof info) return;
  if (info.ssi_signo == SIGTSTP) {
    screen_->GiveBack();
    ::raise(SIGSTOP);
  }
  if (info.ssi_signo != SIGWINCH) screen_->TakeBack();
  Paint();
}

}  // namespace mirelo::app
