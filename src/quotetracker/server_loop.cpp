#include "quotetracker/server_loop.h"

#include <sys/eventfd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace mirelo::quotetracker {

ServerLoop::ServerLoop() : wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (!wake_) throw std::system_error(errno, std::generic_category(), "eventfd");
  events_.Watch(wake_.get(), poll::PollLoop::kRead, [this](unsigned) {
    eventfd_t ignored = 0;
    ::eventfd_read(wake_.get(), &ignored);
    DoPosted();
  });
}

void ServerLoop::Post(std::function<void()> work) {
  {
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(work));
  }
  ::eventfd_write(wake_.get(), 1);
}

void ServerLoop::Stop() noexcept {
  stopping_ = true;
  ::eventfd_write(wake_.get(), 1);
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
