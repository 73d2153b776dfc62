#include "quotetracker/server_loop.h"

#include <utility>

namespace mirelo::quotetracker {

ServerLoop::ServerLoop() : wake_(poll::Bell::Open()) {
  events_.Watch(wake_.Number(), poll::PollLoop::kRead, [this](unsigned) {
    while (wake_.Take()) {
    }
    DoPosted();
  });
}

void ServerLoop::Post(std::function<void()> work) {
  {
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(work));
  }
  wake_.Ring();
}

void ServerLoop::Stop() noexcept {
  stopping_ = true;
  wake_.Ring();
}

void ServerLoop::Run() {
  events_.RunUntil([this] { return stopping_.load(); });
  DoPosted();
}

void ServerLoop::DoPosted() {
  std::vector<std::function<void()>> work;
  {
    const std::lock_guard lock(mutex_);
    work.swap(posted_);
  }
  for (const auto& item : work) item();
}

}  // namespace mirelo::quotetracker
