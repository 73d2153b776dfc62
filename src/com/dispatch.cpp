#include "com/dispatch.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation_server/automation_object.h"
#include "com/arguments.h"
#include "com/class_ids.h"
#include "com/enumeration.h"
#include "com/enumerators.h"
#include "com/errors.h"
#include "com/foreign.h"
#include "com/listeners.h"
#include "com/own_thread.h"
#include "com/text.h"
#include "com/type_information.h"
#include "com/values.h"

namespace mirelo::com {

namespace {

using automation_server::AutomationObject;
using automation_server::Member;
using automation_server::MemberId;

// The two members that no table has, of objects that have events.
constexpr DISPID kAddListener = 0x10000;
constexpr DISPID kRemoveListener = 0x10001;

class Dispatch final : public IDispatch,
                       public IProvideClassInfo2,
                       public IConnectionPointContainer,
                       public ISupportErrorInfo {
 public:
  static Held<IDispatch> Of(const std::shared_ptr<Object>& object);
  static std::shared_ptr<Object> ObjectOf(IUnknown* reference);
  static long Count() { return static_cast<long>(Living().size()); }
  // Ends those that were let go of on other threads.
  static void EndLetGo();

  explicit Dispatch(std::shared_ptr<AutomationObject> door)
      : door_(std::move(door)),
        listeners_(*Identity(), *door_),
        point_(*this, listeners_, EventsOf(door_->table().name())) {
    LivingByDoor().emplace(door_.get(), this);
    Living().emplace(Identity(), this);
  }
  virtual ~Dispatch() {
    Living().erase(Identity());
    LivingByDoor().erase(door_.get());
  }
  Dispatch(const Dispatch&) = delete;
  Dispatch& operator=(const Dispatch&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** place) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** place) override;
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, OLECHAR** names, UINT count, LCID, DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD how, DISPPARAMS* parameters, VARIANT* result,
                                   EXCEPINFO* told, UINT*) override;

  HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** place) override;
  HRESULT STDMETHODCALLTYPE GetGUID(DWORD kind, GUID* place) override;

  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints** place) override;
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID id, IConnectionPoint** place) override;

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override {
    const bool is_ours = id == IID_IDispatch || (CanBeMade() && id == InterfaceOf(ClassName()));
    return is_ours ? S_OK : S_FALSE;
  }

 private:
  // Those that somebody holds. Never taken down: clients may hold some until the process ends.
  static std::unordered_map<const IUnknown*, Dispatch*>& Living() {
    static auto& living = *new std::unordered_map<const IUnknown*, Dispatch*>;
    return living;
  }
  static std::unordered_map<const AutomationObject*, Dispatch*>& LivingByDoor() {
    static auto& living = *new std::unordered_map<const AutomationObject*, Dispatch*>;
    return living;
  }
  // What clients compare objects by.
  IUnknown* Identity() { return static_cast<IDispatch*>(this); }
  bool HasEvents() const { return !door_->table().events().empty(); }
  std::string_view ClassName() const { return door_->table().name(); }
  bool CanBeMade() const { return ClassIdOf(ClassName()) != GUID_NULL; }

  std::optional<DISPID> IdOf(std::string_view name) const;
  MemberId MemberOf(DISPID id) const;
  void Call(DISPID id, WORD how, const DISPPARAMS& parameters, VARIANT* result);
  void Put(DISPID id, WORD how, const DISPPARAMS& parameters);
  void ChangeListeners(DISPID id, const DISPPARAMS& parameters);

  std::shared_ptr<AutomationObject> door_;
  Listeners listeners_;
  EventPoint point_;
  std::atomic<ULONG> references_ = 0;
};

// Those that were let go of past COM, on other threads. What they hold may end on their own thread alone, so
// the next call there ends them, unless it has taken them up again.
class LetGoElsewhere {
 public:
  void Add(Dispatch* object) {
    const std::lock_guard guard(mutex_);
    objects_.insert(object);
  }
  bool Has(Dispatch* object) {
    const std::lock_guard guard(mutex_);
    return objects_.contains(object);
  }
  std::set<Dispatch*> Take() {
    const std::lock_guard guard(mutex_);
    return std::exchange(objects_, {});
  }

 private:
  std::mutex mutex_;
  std::set<Dispatch*> objects_;
};

LetGoElsewhere& Elsewhere() {
  static LetGoElsewhere& elsewhere = *new LetGoElsewhere;
  return elsewhere;
}

Held<IDispatch> Dispatch::Of(const std::shared_ptr<Object>& object) {
  RequireOwnThread();
  EndLetGo();
  auto door = AutomationObject::Of(object);
  if (door == nullptr) return {};
  const auto living = LivingByDoor().find(door.get());
  return Held<IDispatch>(living != LivingByDoor().end() ? living->second : new Dispatch(std::move(door)));
}

std::shared_ptr<Object> Dispatch::ObjectOf(IUnknown* reference) {
  // Asked for by this name, since objects are compared by what they answer then.
  const auto identity = Asked<IUnknown>(reference, IID_IUnknown);
  const auto living = Living().find(identity.get());
  return living != Living().end() ? living->second->door_->object() : nullptr;
}

HRESULT Dispatch::QueryInterface(REFIID id, void** place) {
  if (place == nullptr) return E_POINTER;
  *place = nullptr;
  if (id == IID_IUnknown || id == IID_IDispatch || (CanBeMade() && id == InterfaceOf(ClassName()))) {
    *place = static_cast<IDispatch*>(this);
  } else if ((id == IID_IProvideClassInfo || id == IID_IProvideClassInfo2) && CanBeMade()) {
    *place = static_cast<IProvideClassInfo2*>(this);
  } else if (id == IID_ISupportErrorInfo) {
    *place = static_cast<ISupportErrorInfo*>(this);
  } else if (id == IID_IConnectionPointContainer && HasEvents()) {
    *place = static_cast<IConnectionPointContainer*>(this);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

ULONG Dispatch::Release() {
  const ULONG left = --references_;
  if (left > 0) return left;
  if (!IsOwnThread()) {
    Elsewhere().Add(this);
  } else if (!Elsewhere().Has(this)) {
    delete this;
  }
  return left;
}

void Dispatch::EndLetGo() {
  for (Dispatch* const object : Elsewhere().Take()) {
    if (object->references_ == 0) delete object;
  }
}

HRESULT Dispatch::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

HRESULT Dispatch::GetTypeInfo(UINT number, LCID, ITypeInfo** place) {
  if (place == nullptr) return E_POINTER;
  *place = nullptr;
  if (number != 0) return DISP_E_BADINDEX;
  return OnOwnThread([&]() -> HRESULT {
    *place = InterfaceInformation(door_->object()->TypeName()).Release();
    return *place != nullptr ? S_OK : TYPE_E_ELEMENTNOTFOUND;
  });
}

HRESULT Dispatch::GetIDsOfNames(REFIID, OLECHAR** names, UINT count, LCID, DISPID* ids) {
  if (names == nullptr || ids == nullptr) return E_POINTER;
  std::fill_n(ids, count, DISPID_UNKNOWN);
  return OnOwnThread([&]() -> HRESULT {
    const std::optional<DISPID> id = count > 0 ? IdOf(TextOf(names[0])) : std::nullopt;
    if (!id) return DISP_E_UNKNOWNNAME;
    ids[0] = *id;
    // The others name its arguments.
    HRESULT result = S_OK;
    for (UINT i = 1; i < count; ++i) {
      try {
        ids[i] = static_cast<DISPID>(door_->PlaceOf(MemberOf(*id), TextOf(names[i])));
      } catch (const RuntimeError&) {
        result = DISP_E_UNKNOWNNAME;
      }
    }
    return result;
  });
}

HRESULT Dispatch::Invoke(DISPID id, REFIID, LCID, WORD how, DISPPARAMS* parameters, VARIANT* result,
                         EXCEPINFO* told, UINT*) {
  if (parameters == nullptr) return E_POINTER;
  if (result != nullptr) ::VariantInit(result);
  EXCEPINFO unasked{};
  const Held<IDispatch> alive(this);
  const HRESULT ended = OnOwnThread(
      [&]() -> HRESULT {
        EndLetGo();
        if (id == kAddListener || id == kRemoveListener) {
          ChangeListeners(id, *parameters);
        } else if ((how & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
          Put(id, how, *parameters);
        } else {
          Call(id, how, *parameters, result);
        }
        return S_OK;
      },
      told != nullptr ? told : &unasked);
  ::SysFreeString(unasked.bstrDescription);
  ::SysFreeString(unasked.bstrSource);
  return ended;
}

HRESULT Dispatch::GetClassInfo(ITypeInfo** place) {
  if (place == nullptr) return E_POINTER;
  *place = nullptr;
  return OnOwnThread([&]() -> HRESULT {
    *place = ClassInformation(ClassName()).Release();
    return *place != nullptr ? S_OK : TYPE_E_ELEMENTNOTFOUND;
  });
}

HRESULT Dispatch::GetGUID(DWORD kind, GUID* place) {
  if (place == nullptr) return E_POINTER;
  *place = GUID_NULL;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID || !HasEvents()) return E_INVALIDARG;
  *place = EventsOf(ClassName());
  return S_OK;
}

struct OfferedPoint {
  Held<IConnectionPoint> point;
  void Give(IConnectionPoint*& place) const { place = Held<IConnectionPoint>(point).Release(); }
};

HRESULT Dispatch::EnumConnectionPoints(IEnumConnectionPoints** place) {
  if (place == nullptr) return E_POINTER;
  *place = nullptr;
  return OnOwnThread([&]() -> HRESULT {
    using Points = Walker<IEnumConnectionPoints, IConnectionPoint*, OfferedPoint>;
    std::vector<OfferedPoint> points{{Held<IConnectionPoint>(&point_)}};
    *place = Held<IEnumConnectionPoints>(new Points(IID_IEnumConnectionPoints, std::move(points))).Release();
    return S_OK;
  });
}

HRESULT Dispatch::FindConnectionPoint(REFIID id, IConnectionPoint** place) {
  if (place == nullptr) return E_POINTER;
  *place = nullptr;
  if (id != point_.events()) return CONNECT_E_NOCONNECTION;
  *place = Held<IConnectionPoint>(&point_).Release();
  return S_OK;
}

std::optional<DISPID> Dispatch::IdOf(std::string_view name) const {
  const automation_server::Class& table = door_->table();
  const auto id = table.Find(name);
  if (id && id == table.Default()) return DISPID_VALUE;
  if (id && id == table.Enumeration()) return DISPID_NEWENUM;
  if (id) return *id;
  if (HasEvents() && EqualText(name, "AddListener")) return kAddListener;
  if (HasEvents() && EqualText(name, "RemoveListener")) return kRemoveListener;
  return std::nullopt;
}

MemberId Dispatch::MemberOf(DISPID id) const {
  const automation_server::Class& table = door_->table();
  const auto member = id == DISPID_VALUE     ? table.Default()
                      : id == DISPID_NEWENUM ? table.Enumeration()
                                             : std::optional<MemberId>(id);
  if (!member) throw Errors::MemberNotFound();
  return *member;
}

void Dispatch::Call(DISPID id, WORD how, const DISPPARAMS& parameters, VARIANT* result) {
  const MemberId called = MemberOf(id);
  const Member& member = door_->table().At(called);
  if (member.kind == Member::Kind::kEnumeration) {
    const Held<IEnumVARIANT> walk = WalkOf(door_->NewEnum());
    if (result == nullptr) return;
    result->punkVal = Held<IUnknown>(walk.get()).Release();
    result->vt = VT_UNKNOWN;
    return;
  }
  ClientArguments arguments(parameters, member);
  // Most clients write methods and properties alike.
  const bool is_property = (how & DISPATCH_METHOD) == 0;
  if (is_property && member.kind != Member::Kind::kProperty) throw Errors::MemberNotFound();
  Variant value;
  try {
    value = door_->Call(called, arguments.values());
  } catch (...) {
    arguments.GiveBack();  // also when it fails after it has left something there
    throw;
  }
  arguments.GiveBack();
  if (result != nullptr) ToClient(Leaving(std::move(value)), *result);
}

void Dispatch::Put(DISPID id, WORD how, const DISPPARAMS& parameters) {
  const UINT place = PlaceOfAssigned(parameters);
  const MemberId assigned = MemberOf(id);
  DISPPARAMS with_name = parameters;
  DISPID value_name = DISPID_PROPERTYPUT;
  if (parameters.cNamedArgs == 0) {  // a client that does not name the value
    with_name.rgdispidNamedArgs = &value_name;
    with_name.cNamedArgs = 1;
  }
  ClientArguments arguments(with_name, door_->table().At(assigned));
  const Variant value = Entering(FromClient(parameters.rgvarg[place]));
  if ((how & DISPATCH_PROPERTYPUT) == 0) {
    door_->Set(assigned, value, std::move(arguments.values()));
  } else {
    door_->Let(assigned, value, std::move(arguments.values()));
  }
}

void Dispatch::ChangeListeners(DISPID id, const DISPPARAMS& parameters) {
  if (!HasEvents()) throw Errors::MemberNotFound();
  if (parameters.cArgs == 0) throw Errors::ArgumentNotOptional();
  if (parameters.cArgs > 1) throw Errors::WrongNumberOfArguments();
  if (parameters.rgvarg == nullptr) throw Errors::InvalidProcedureCall();
  ClientValue given;
  Require(::VariantCopyInd(given.get(), &parameters.rgvarg[0]));
  if (given->vt != VT_DISPATCH) throw Errors::ObjectRequired();
  if (id == kAddListener) {
    listeners_.Add(given->pdispVal);
  } else {
    listeners_.Remove(given->pdispVal);
  }
}

}  // namespace

Held<IDispatch> DispatchOf(const std::shared_ptr<Object>& object) { return Dispatch::Of(object); }

std::shared_ptr<Object> ObjectBehind(IUnknown* reference) { return Dispatch::ObjectOf(reference); }

long HeldObjects() { return Dispatch::Count(); }

}  // namespace mirelo::com
