#include "automation_server/subscription.h"

namespace mirelo::automation_server {

Subscription::Subscription(const std::shared_ptr<Object>& object, const std::vector<EventMember>& events,
                           EventSink sink)
    : object_(object) {
  const auto shared = std::make_shared<const EventSink>(std::move(sink));
  taken_.reserve(events.size());
  for (const EventMember& event : events) {
    const auto cookie = event.subscribe(
        *object, [&event, shared](std::span<const Variant> arguments) { (*shared)(event, arguments); });
    taken_.push_back({&event, cookie});
  }
}

Subscription& Subscription::operator=(Subscription&& other) noexcept {
  if (this == &other) return *this;
  End();
  object_ = std::move(other.object_);
  taken_ = std::move(other.taken_);
  other.taken_.clear();
  return *this;
}

void Subscription::End() noexcept {
  const std::vector<Taken> taken = std::move(taken_);
  taken_.clear();
  const auto object = object_.lock();
  if (object == nullptr) return;
  for (const Taken& each : taken) each.event->unsubscribe(*object, each.cookie);
}

}  // namespace mirelo::automation_server
