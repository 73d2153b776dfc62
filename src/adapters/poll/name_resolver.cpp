#include "adapters/poll/name_resolver.h"

#include <netdb.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace mirelo::poll {

NameResolver::Answer NameResolver::AskSystem(const std::string& name) {
  addrinfo hints = {};
  hints.ai_family = AF_INET;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  const int failure = ::getaddrinfo(name.c_str(), nullptr, &hints, &found);
  if (failure == EAI_SYSTEM) return {std::nullopt, std::generic_category().message(errno)};
  if (failure != 0) return {std::nullopt, ::gai_strerror(failure)};
  Answer answer{reinterpret_cast<const sockaddr_in*>(found->ai_addr)->sin_addr, {}};
  ::freeaddrinfo(found);
  return answer;
}

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
  if (answered_.Number() < 0)
    answered_ = Descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK | EFD_SEMAPHORE));
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
  sigset_t all, former;
  ::sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, &former);
  try {
    worker_ = std::thread([this] { Work(); });
  } catch (...) {
    ::pthread_sigmask(SIG_SETMASK, &former, nullptr);
    throw;
  }
  ::pthread_sigmask(SIG_SETMASK, &former, nullptr);
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
    ::eventfd_write(answered_.Number(), 1);
  }
}

// One answer a call: should its receiver throw, the loop comes back for the next one. The receiver is called
// last, as it may let go of the resolver.
void NameResolver::TakeAnswer() {
  eventfd_t one = 0;
  if (::eventfd_read(answered_.Number(), &one) != 0) return;
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
