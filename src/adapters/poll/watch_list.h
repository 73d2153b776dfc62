#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "adapters/poll/polled.h"
#include "host/message_loop.h"

namespace mirelo::poll {

// The watched descriptors, kept as the array that poll(2) takes. The array is changed in place by each call,
// never built anew.
class WatchList {
 public:
  using Token = host::MessageLoop::Token;
  using Handler = std::function<void(unsigned ready)>;

  using Limit = std::optional<std::chrono::nanoseconds>;  // at least 0

  struct Watch {
    Token token;
    int descriptor;
    unsigned interest;
    Handler handler;
    std::size_t slot;             // index in the array; kNoSlot when the watch has ended
    int depth = 0;                // how many calls of the handler are on the stack
    std::uint64_t last_poll = 0;  // number of the poll whose result the handler got last
  };
  static constexpr std::size_t kNoSlot = static_cast<std::size_t>(-1);

  struct Ready {
    Token token;
    short events;  // as poll(2) reports them
  };

  // Adds a watch. A descriptor that is in the list already can only have been closed and opened anew: its
  // former watch ends.
  void Add(Token token, int descriptor, unsigned interest, Handler handler);
  // Nothing when the token is unknown. The caller's copies keep a watch alive whose handler runs.
  std::shared_ptr<Watch> Find(Token token) const;
  void Remove(Token token);

  // Brings the array into line with the watch's interest and depth. For a watch that has ended it does
  // nothing.
  void Update(const Watch& watch);

  // Waits up to the limit (without one when there is none) and tells what is ready; nothing when a signal
  // came. Watches whose descriptor isn't open are removed: they could never be handled, and would be ready
  // for ever.
  std::vector<Ready> Poll(Limit limit);

  std::size_t Count() const { return watches_.size(); }
  // The array that poll(2) takes, which passes over negative descriptors.
  const std::vector<pollfd>& Polled() const { return slots_; }
  // Ends all watches. Their handlers may call Remove while they are destroyed.
  void Clear();

 private:
  void GiveUpSlot(Watch& watch);

  std::unordered_map<Token, std::shared_ptr<Watch>> watches_;
  std::unordered_map<int, Token> tokens_;  // by descriptor
  std::vector<pollfd> slots_;
  std::vector<Watch*> owners_;  // of the slots
};

// The part of `interest` that events of poll(2) satisfy.
unsigned ReadyBits(unsigned interest, short events);

}  // namespace mirelo::poll
