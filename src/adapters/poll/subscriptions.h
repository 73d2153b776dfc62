#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace mirelo::poll {

// The sinks of one kind of event, in the order in which they subscribed. Sinks may subscribe, unsubscribe and
// raise again while an event is raised: one added meanwhile gets the next event, one removed gets no more.
template <class Sink>
class Subscriptions {
 public:
  // `id` is greater than all before it.
  void Add(std::int32_t id, std::shared_ptr<Sink> sink) { entries_.push_back({id, std::move(sink)}); }

  void Remove(std::int32_t id) {
    std::erase_if(entries_, [id](const Entry& entry) { return entry.id == id; });
  }

  void Clear() { entries_.clear(); }

  // Calls `event` with each sink, which lives until its call returns.
  template <class Call>
  void Raise(const Call& event) const {
    if (entries_.empty()) return;
    const std::int32_t last = entries_.back().id;
    for (std::int32_t called = 0; called < last;) {
      // Found anew each time, for the calls may have changed the list.
      const auto next = std::find_if(entries_.begin(), entries_.end(),
                                     [called](const Entry& entry) { return entry.id > called; });
      if (next == entries_.end() || next->id > last) return;
      called = next->id;
      const std::shared_ptr<Sink> sink = next->sink;
      event(*sink);
    }
  }

 private:
  struct Entry {
    std::int32_t id;
    std::shared_ptr<Sink> sink;
  };
  std::vector<Entry> entries_;
};

}  // namespace mirelo::poll
