#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "adapters/poll/bell.h"
#include "adapters/poll/ipv4.h"
#include "host/message_loop.h"

namespace mirelo::poll {

// Looks host names up without keeping the loop waiting: one thread asks the system, one name after the other,
// and the loop hears of the answers through a descriptor, which it watches only while an answer is due. All
// members are called on the loop's thread. Destruction waits for a lookup that is under way, as the system
// can't break it off.
class NameResolver {
 public:
  struct Answer {
    std::optional<Ipv4> address;
    std::string error;  // for people, when there is no address
  };
  using Lookup = std::function<Answer(const std::string& name)>;
  using Done = std::function<void(const Answer& answer)>;
  using Ticket = std::uint64_t;  // never 0

  // Asks the system for the first IPv4 address of a name. Blocks.
  static Answer AskSystem(const std::string& name);

  // `lookup` is called on the resolver's thread.
  NameResolver(host::MessageLoop& loop, Lookup lookup);
  ~NameResolver();
  NameResolver(const NameResolver&) = delete;
  NameResolver& operator=(const NameResolver&) = delete;

  // Calls `done` from the loop, once. Error 67 when no descriptor is left.
  Ticket Resolve(const std::string& name, Done done);
  // `done` is not called any more. Unknown tickets are ignored.
  void Cancel(Ticket ticket);

 private:
  void StartWorker();
  void Work();
  void TakeAnswer();
  void StopWatchingWhenAllAnswered();

  host::MessageLoop& loop_;
  const Lookup lookup_;
  Bell answered_;  // rung for each answer that waits
  host::MessageLoop::Token watch_ = 0;
  std::map<Ticket, Done> pending_;
  Ticket last_ticket_ = 0;
  std::thread worker_;

  struct Question {
    Ticket ticket;
    std::string name;
  };
  struct Reply {
    Ticket ticket;
    Answer answer;
  };
  std::mutex mutex_;  // guards what follows
  std::condition_variable changed_;
  std::deque<Question> questions_;
  std::deque<Reply> replies_;
  bool stopping_ = false;
};

}  // namespace mirelo::poll
