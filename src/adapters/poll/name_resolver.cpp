#include "adapters/poll/name_resolver.h"

#include <algorithm>
#include <utility>

#include "adapters/poll/blocked_signals.h"

namespace mirelo::poll {

NameResolver::NameResolver(host::MessageLoop& loop, Lookup lookup)
    : loop_(loop), lookup_(std::move(lookup)) {}

NameResolver::~NameResolver() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
    changed_.notify_one();
  }
  if (worker_.joinable()) worker_.join();
  loop_.Unwatch(watch_);
}

NameResolver::Ticket NameResolver::Resolve(const std::string& name, Done done) {
  if (answered_.Number() < 0) answered_ = Bell::Open();
  if (!worker_.joinable()) StartWorker();
  if (watch_ == 0) {
    watch_ = loop_.Watch(answered_.Number(), host::MessageLoop::kRead, [this](unsigned) { TakeAnswer(); });
  }
  const Ticket ticket = ++last_ticket_;
  pending_.emplace(ticket, std::move(done));
  const std::lock_guard lock(mutex_);
  questions_.push_back({ticket, name});
  changed_.notify_one();
  return ticket;
}

void NameResolver::Cancel(Ticket ticket) {
  if (pending_.erase(ticket) == 0) return;
  StopWatchingWhenAllAnswered();
  const std::lock_guard lock(mutex_);
  std::erase_if(questions_, [ticket](const Question& question) { return question.ticket == ticket; });
}

// The thread inherits that all signals are blocked: they are meant for the loop's thread and end its wait.
void NameResolver::StartWorker() {
  const BlockedSignals blocked;
  worker_ = std::thread([this] { Work(); });
}

// The resolver's thread.
void NameResolver::Work() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return stopping_ || !questions_.empty(); });
    if (stopping_) return;
    const Question question = std::move(questions_.front());
    questions_.pop_front();
    lock.unlock();
    Answer answer = lookup_(question.name);
    lock.lock();
    replies_.push_back({question.ticket, std::move(answer)});
    answered_.Ring();
  }
}

// One answer a call: should its receiver throw, the loop comes back for the next one. The receiver is called
// last, as it may let go of the resolver.
void NameResolver::TakeAnswer() {
  if (!answered_.Take()) return;
  Reply reply;
  {
    const std::lock_guard lock(mutex_);
    reply = std::move(replies_.front());
    replies_.pop_front();
  }
  const auto receiver = pending_.extract(reply.ticket);
  if (receiver.empty()) return;
  StopWatchingWhenAllAnswered();
  receiver.mapped()(reply.answer);
}

void NameResolver::StopWatchingWhenAllAnswered() {
  if (pending_.empty()) loop_.Unwatch(std::exchange(watch_, 0));
}

}  // namespace mirelo::poll
