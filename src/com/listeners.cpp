#include "com/listeners.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "automation/runtime_error.h"
#include "com/calls.h"
#include "com/enumerators.h"
#include "com/errors.h"
#include "com/own_thread.h"

namespace mirelo::com {

using automation_server::EventMember;

std::optional<DWORD> Listeners::Advise(IUnknown* sink, const IID& events) {
  Held<IDispatch> called = Asked<IDispatch>(sink, events);
  if (!called) called = Asked<IDispatch>(sink, IID_IDispatch);
  if (!called) return std::nullopt;
  by_number_.emplace(++last_number_, std::move(called));
  Follow();
  return last_number_;
}

bool Listeners::Unadvise(DWORD number) {
  const bool was_known = by_number_.erase(number) != 0;
  Follow();
  return was_known;
}

void Listeners::Add(IDispatch* listener) {
  if (listener == nullptr) throw Errors::ObjectNotSet();
  const Held<IDispatch> added(listener);
  if (std::ranges::find(by_name_, added) == by_name_.end()) by_name_.push_back(added);
  Follow();
}

void Listeners::Remove(IDispatch* listener) {
  std::erase(by_name_, Held<IDispatch>(listener));
  Follow();
}

void Listeners::Follow() {
  const bool has_any = !by_number_.empty() || !by_name_.empty();
  if (has_any == follows_) return;
  follows_ = has_any;
  if (!has_any) return subscription_.End();
  subscription_ = door_.Subscribe(
      [this](const EventMember& event, std::span<const Variant> arguments) { Tell(event, arguments); });
}

void Listeners::Tell(const EventMember& event, std::span<const Variant> arguments) {
  const Held<IUnknown> alive(&owner_);
  const auto& events = door_.table().events();
  const auto number = static_cast<DISPID>(&event - events.data() + 1);
  // Listeners may come and go meanwhile: new ones are told of the next event, and who is gone of none.
  const auto by_number = by_number_;
  const auto by_name = by_name_;
  for (const auto& [known, sink] : by_number) {
    if (by_number_.contains(known)) CallForEvent(*sink.get(), number, event.parameters, arguments);
  }
  for (const auto& listener : by_name) {
    if (std::ranges::find(by_name_, listener) == by_name_.end()) continue;
    const std::optional<DISPID> method = MemberNamed(*listener.get(), event.name);
    if (method) CallForEvent(*listener.get(), *method, event.parameters, arguments);
  }
}

HRESULT EventPoint::QueryInterface(REFIID id, void** place) {
  if (place == nullptr) return E_POINTER;
  *place = nullptr;
  if (id != IID_IUnknown && id != IID_IConnectionPoint) return E_NOINTERFACE;
  *place = static_cast<IConnectionPoint*>(this);
  AddRef();
  return S_OK;
}

HRESULT EventPoint::GetConnectionInterface(IID* id) {
  if (id == nullptr) return E_POINTER;
  *id = events_;
  return S_OK;
}

HRESULT EventPoint::GetConnectionPointContainer(IConnectionPointContainer** place) {
  if (place == nullptr) return E_POINTER;
  *place = Held<IConnectionPointContainer>(&owner_).Release();
  return S_OK;
}

HRESULT EventPoint::Advise(IUnknown* sink, DWORD* number) {
  if (number == nullptr) return E_POINTER;
  *number = 0;
  if (sink == nullptr) return E_POINTER;
  return OnOwnThread([&]() -> HRESULT {
    const auto advised = listeners_.Advise(sink, events_);
    if (!advised) return CONNECT_E_CANNOTCONNECT;
    *number = *advised;
    return S_OK;
  });
}

namespace {

struct Connection {
  Held<IDispatch> sink;
  DWORD number;
  void Give(CONNECTDATA& place) const {
    place.pUnk = Held<IDispatch>(sink).Release();
    place.dwCookie = number;
  }
};

}  // namespace

HRESULT EventPoint::EnumConnections(IEnumConnections** place) {
  if (place == nullptr) return E_POINTER;
  *place = nullptr;
  return OnOwnThread([&]() -> HRESULT {
    using Connections = Walker<IEnumConnections, CONNECTDATA, Connection>;
    std::vector<Connection> connections;
    for (const auto& [number, sink] : listeners_.Advised()) connections.push_back({sink, number});
    *place = Held<IEnumConnections>(new Connections(IID_IEnumConnections, std::move(connections))).Release();
    return S_OK;
  });
}

HRESULT EventPoint::Unadvise(DWORD number) {
  return OnOwnThread(
      [&]() -> HRESULT { return listeners_.Unadvise(number) ? S_OK : CONNECT_E_NOCONNECTION; });
}

}  // namespace mirelo::com
