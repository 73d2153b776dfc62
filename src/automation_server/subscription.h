#pragma once

#include <functional>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "automation/variant.h"
#include "automation_server/member.h"

namespace mirelo::automation_server {

// Who is told of an object's events: which one, and its arguments.
using EventSink = std::function<void(const EventMember& event, std::span<const Variant> arguments)>;

// The right to be told of one object's events; it ends with this value. It does not keep the object alive,
// and may end within the sink that it is for.
class Subscription {
 public:
  Subscription() = default;
  Subscription(const std::shared_ptr<Object>& object, const std::vector<EventMember>& events, EventSink sink);
  Subscription(Subscription&& other) noexcept { *this = std::move(other); }
  Subscription& operator=(Subscription&& other) noexcept;
  ~Subscription() { End(); }

  void End() noexcept;

 private:
  struct Taken {
    const EventMember* event;
    EventMember::Cookie cookie;
  };

  std::weak_ptr<Object> object_;
  std::vector<Taken> taken_;
};

}  // namespace mirelo::automation_server
