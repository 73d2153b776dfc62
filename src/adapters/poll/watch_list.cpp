#include "adapters/poll/watch_list.h"

#include <utility>

namespace mirelo::poll {

namespace {

constexpr unsigned kReadable = host::MessageLoop::kRead;
constexpr unsigned kWritable = host::MessageLoop::kWrite;

short EventsFor(unsigned interest) {
  return static_cast<short>(((interest & kReadable) != 0 ? POLLIN : 0) |
                            ((interest & kWritable) != 0 ? POLLOUT : 0));
}

}  // namespace

void WatchList::Add(Token token, int descriptor, unsigned interest, Handler handler) {
  if (const auto former = tokens_.find(descriptor); former != tokens_.end()) Remove(former->second);
  auto watch = std::make_shared<Watch>(Watch{token, descriptor, interest, std::move(handler), slots_.size()});
  slots_.push_back({});
  owners_.push_back(watch.get());
  Update(*watch);
  tokens_.emplace(descriptor, token);
  watches_.emplace(token, std::move(watch));
}

std::shared_ptr<WatchList::Watch> WatchList::Find(Token token) const {
  const auto watch = watches_.find(token);
  return watch == watches_.end() ? nullptr : watch->second;
}

void WatchList::Remove(Token token) {
  const auto node = watches_.extract(token);  // destroyed at the end, as handlers may come back when they are
  if (node.empty()) return;
  tokens_.erase(node.mapped()->descriptor);
  GiveUpSlot(*node.mapped());
}

void WatchList::Update(const Watch& watch) {
  if (watch.slot == kNoSlot) return;
  const bool asked = watch.interest != 0 && watch.depth < host::MessageLoop::kNestLimit;
  // poll(2) passes over negative descriptors; without events it would still report hang-ups.
  slots_[watch.slot] = {asked ? watch.descriptor : -1, EventsFor(watch.interest), 0};
}

std::vector<WatchList::Ready> WatchList::Poll(Limit limit) {
  if (slots_.empty() && limit == Limit(0)) return {};
  const int count = WaitFor(slots_, limit);
  std::vector<Ready> ready;
  if (count == 0) return ready;
  ready.reserve(static_cast<std::size_t>(count));
  std::vector<Token> closed;
  for (std::size_t slot = 0; slot < slots_.size(); ++slot) {
    const short events = slots_[slot].revents;
    if (events == 0) continue;
    if ((events & POLLNVAL) != 0) {
      closed.push_back(owners_[slot]->token);
    } else {
      ready.push_back({owners_[slot]->token, events});
    }
  }
  for (const Token token : closed) Remove(token);
  return ready;
}

void WatchList::Clear() {
  while (!watches_.empty()) Remove(watches_.begin()->first);
}

void WatchList::GiveUpSlot(Watch& watch) {
  const std::size_t slot = std::exchange(watch.slot, kNoSlot);
  if (slot + 1 != slots_.size()) {
    slots_[slot] = slots_.back();
    owners_[slot] = owners_.back();
    owners_[slot]->slot = slot;
  }
  slots_.pop_back();
  owners_.pop_back();
}

unsigned ReadyBits(unsigned interest, short events) {
  if ((events & (POLLERR | POLLHUP)) != 0) return interest;
  const unsigned ready =
      ((events & POLLIN) != 0 ? kReadable : 0U) | ((events & POLLOUT) != 0 ? kWritable : 0U);
  return ready & interest;
}

}  // namespace mirelo::poll
