#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace mirelo {

// An event of a class: handlers are called in the order in which they subscribed, with the arguments of
// Raise. Handlers may subscribe, unsubscribe (themselves too) and raise again while it is being raised: one
// that was added meanwhile is first called by the next Raise, one that was removed is no longer called. The
// event must outlive its own Raise. A handler's exception leaves Raise and skips the handlers behind it.
template <class... Args>
class Event {
 public:
  using Handler = std::function<void(Args...)>;
  using Cookie = std::uint32_t;

  Event() = default;
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  // Never 0, and never given twice by one event.
  Cookie Subscribe(Handler handler) {
    slots_.push_back(std::make_shared<Slot>(Slot{++last_cookie_, std::move(handler)}));
    return last_cookie_;
  }

  void Unsubscribe(Cookie cookie) {
    for (auto slot = slots_.begin(); slot != slots_.end(); ++slot) {
      if ((*slot)->cookie != cookie) continue;
      (*slot)->removed = true;
      slots_.erase(slot);
      return;
    }
  }

  bool HasSubscribers() const { return !slots_.empty(); }

  void Raise(Args... args) const {
    if (slots_.empty()) return;
    if (slots_.size() == 1) {  // the usual case, without a copy of the list
      const std::shared_ptr<Slot> only = slots_.front();
      only->handler(args...);
      return;
    }
    const auto slots = slots_;
    for (const auto& slot : slots) {
      if (!slot->removed) slot->handler(args...);
    }
  }

 private:
  struct Slot {
    Cookie cookie;
    Handler handler;
    bool removed = false;
  };
  std::vector<std::shared_ptr<Slot>> slots_;
  Cookie last_cookie_ = 0;
};

}  // namespace mirelo
