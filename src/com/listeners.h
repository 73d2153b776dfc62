#pragma once

#include "com/system.h"

#include <map>
#include <optional>
#include <span>
#include <vector>

#include "automation/variant.h"
#include "automation_server/automation_object.h"
#include "com/held.h"

namespace mirelo::com {

// Who is told of one object's events. It belongs to the dispatch of the object, which is held meanwhile.
class Listeners {
 public:
  Listeners(IUnknown& owner, automation_server::AutomationObject& door) : owner_(owner), door_(door) {}

  // Those that are called by the events' numbers, and the number that each goes by; nothing for what cannot
  // be called by `events` or as a dispatch.
  std::optional<DWORD> Advise(IUnknown* sink, const IID& events);
  bool Unadvise(DWORD number);
  const std::map<DWORD, Held<IDispatch>>& Advised() const { return by_number_; }

  // Those whose methods bear the events' names; nobody is told twice.
  void Add(IDispatch* listener);
  void Remove(IDispatch* listener);

 private:
  void Follow();
  void Tell(const automation_server::EventMember& event, std::span<const Variant> arguments);

  IUnknown& owner_;
  automation_server::AutomationObject& door_;
  std::map<DWORD, Held<IDispatch>> by_number_;
  std::vector<Held<IDispatch>> by_name_;
  DWORD last_number_ = 0;
  bool follows_ = false;
  automation_server::Subscription subscription_;
};

// The connection point of an object's events. It lives as long as its owner, whose references it counts.
class EventPoint final : public IConnectionPoint {
 public:
  EventPoint(IConnectionPointContainer& owner, Listeners& listeners, const IID& events)
      : owner_(owner), listeners_(listeners), events_(events) {}
  EventPoint(const EventPoint&) = delete;
  EventPoint& operator=(const EventPoint&) = delete;
  virtual ~EventPoint() = default;

  const IID& events() const { return events_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** place) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return owner_.AddRef(); }
  ULONG STDMETHODCALLTYPE Release() override { return owner_.Release(); }

  HRESULT STDMETHODCALLTYPE GetConnectionInterface(IID* id) override;
  HRESULT STDMETHODCALLTYPE GetConnectionPointContainer(IConnectionPointContainer** place) override;
  HRESULT STDMETHODCALLTYPE Advise(IUnknown* sink, DWORD* number) override;
  HRESULT STDMETHODCALLTYPE Unadvise(DWORD number) override;
  HRESULT STDMETHODCALLTYPE EnumConnections(IEnumConnections** place) override;

 private:
  IConnectionPointContainer& owner_;
  Listeners& listeners_;
  IID events_;
};

}  // namespace mirelo::com
