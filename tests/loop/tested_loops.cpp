#include "loop/tested_loops.h"

#include <ostream>
#include <utility>

#ifdef _WIN32
#include "loop/loop_in_a_program.h"
#else
#include "adapters/qt/qt_loop.h"
#include "loop/queued_office.h"
#endif

namespace mirelo {

void PrintTo(LoopKind kind, std::ostream* out) {
  switch (kind) {
    case LoopKind::kPoll:
      *out << "Poll";
      break;
#ifdef _WIN32
    case LoopKind::kProgram:
      *out << "Program";
      break;
#else
    case LoopKind::kQt:
      *out << "Qt";
      break;
    case LoopKind::kOffice:
      *out << "Office";
      break;
#endif
  }
}

AnyLoop::AnyLoop(LoopKind kind, std::function<Time()> now) {
  switch (kind) {
    case LoopKind::kPoll:
      Make<poll::PollLoop>(std::move(now));
      break;
#ifdef _WIN32
    case LoopKind::kProgram:
      Make<LoopInAProgram>(std::move(now));
      break;
#else
    case LoopKind::kQt:
      Make<qt::QtLoop>(std::move(now));
      break;
    case LoopKind::kOffice:
      Make<LoopInAnOffice>(std::move(now));
      break;
#endif
  }
}

template <class Loop>
void AnyLoop::Make(std::function<Time()> now) {
  auto made = std::make_unique<Loop>(std::move(now));
  watch_count_ = [&loop = *made] { return loop.WatchCount(); };
  next_timer_ = [&loop = *made] { return loop.NextTimer(); };
  loop_ = std::move(made);
}

host::MessageLoop::Token AnyLoop::Watch(int descriptor, unsigned interest,
                                        std::function<void(unsigned ready)> handler) {
  return loop_->Watch(descriptor, interest, std::move(handler));
}
void AnyLoop::Rewatch(Token watch, unsigned interest) { loop_->Rewatch(watch, interest); }
void AnyLoop::Unwatch(Token watch) { loop_->Unwatch(watch); }
host::MessageLoop::Token AnyLoop::StartTimer(Milliseconds delay, std::function<void()> handler) {
  return loop_->StartTimer(delay, std::move(handler));
}
void AnyLoop::StopTimer(Token timer) { loop_->StopTimer(timer); }
void AnyLoop::Yield() { loop_->Yield(); }
void AnyLoop::RunUntil(const std::function<bool()>& done) { loop_->RunUntil(done); }

}  // namespace mirelo
