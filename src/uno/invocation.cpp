#include "uno/invocation.h"

#include <algorithm>
#include <com/sun/star/beans/UnknownPropertyException.hpp>
#include <com/sun/star/beans/XIntrospectionAccess.hpp>
#include <com/sun/star/container/NoSuchElementException.hpp>
#include <com/sun/star/container/XEnumerationAccess.hpp>
#include <com/sun/star/lang/NoSuchMethodException.hpp>
#include <com/sun/star/reflection/ParamMode.hpp>
#include <com/sun/star/reflection/XIdlMethod.hpp>
#include <com/sun/star/script/BasicErrorException.hpp>
#include <com/sun/star/script/MemberType.hpp>
#include <com/sun/star/script/XDefaultMethod.hpp>
#include <com/sun/star/script/XDefaultProperty.hpp>
#include <com/sun/star/script/XInvocation2.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/implbase4.hxx>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "automation_server/automation_object.h"
#include "uno/errors.h"
#include "uno/listeners.h"
#include "uno/own_thread.h"
#include "uno/text.h"
#include "uno/values.h"

namespace mirelo::uno {

namespace {

using automation_server::Arguments;
using automation_server::AutomationObject;
using automation_server::Member;
using automation_server::MemberId;
using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using rtl::OUString;

// Members are told of by the table alone. Python asks this for the adapter of an object of its own.
class NothingMore final : public cppu::WeakImplHelper1<css::beans::XIntrospectionAccess> {
 public:
  sal_Int32 SAL_CALL getSuppliedMethodConcepts() override { return 0; }
  sal_Int32 SAL_CALL getSuppliedPropertyConcepts() override { return 0; }
  css::beans::Property SAL_CALL getProperty(const OUString&, sal_Int32) override {
    throw css::container::NoSuchElementException();
  }
  sal_Bool SAL_CALL hasProperty(const OUString&, sal_Int32) override { return false; }
  Sequence<css::beans::Property> SAL_CALL getProperties(sal_Int32) override { return {}; }
  Reference<css::reflection::XIdlMethod> SAL_CALL getMethod(const OUString&, sal_Int32) override {
    throw css::lang::NoSuchMethodException();
  }
  sal_Bool SAL_CALL hasMethod(const OUString&, sal_Int32) override { return false; }
  Sequence<Reference<css::reflection::XIdlMethod>> SAL_CALL getMethods(sal_Int32) override { return {}; }
  Sequence<css::uno::Type> SAL_CALL getSupportedListeners() override { return {}; }
  using cppu::OWeakObject::queryAdapter;
  Reference<css::uno::XInterface> SAL_CALL queryAdapter(const css::uno::Type&) override { return {}; }
};

// A walk of a For Each, which asks for more before it takes the next.
class Walk final : public LetGoOnOwnThread<cppu::WeakImplHelper1<css::container::XEnumeration>> {
 public:
  explicit Walk(std::shared_ptr<automation_server::Enumeration> items) : items_(std::move(items)) {
    next_ = items_->Next();
  }

  sal_Bool SAL_CALL hasMoreElements() override {
    return AtTheBorder([&]() -> sal_Bool { return next_.has_value(); });
  }
  Any SAL_CALL nextElement() override {
    return OnOwnThread([&] {
      if (!next_) throw css::container::NoSuchElementException();
      const std::optional<Variant> item = std::exchange(next_, items_->Next());
      return ToOffice(*item);
    });
  }

 private:
  std::shared_ptr<automation_server::Enumeration> items_;
  std::optional<Variant> next_;
};

class Invocation final
    : public LetGoOnOwnThread<
          cppu::WeakImplHelper4<css::script::XInvocation2, css::container::XEnumerationAccess,
                                css::script::XDefaultMethod, css::script::XDefaultProperty>> {
 public:
  static Reference<css::script::XInvocation> Of(const std::shared_ptr<Object>& object);
  static std::shared_ptr<Object> ObjectOf(const Reference<css::uno::XInterface>& invocation);

  explicit Invocation(std::shared_ptr<AutomationObject> door)
      : door_(std::move(door)), listeners_(*this, *door_) {
    LivingByDoor().emplace(door_.get(), this);
    Living().emplace(Identity(), this);
  }
  ~Invocation() override {
    Living().erase(Identity());
    LivingByDoor().erase(door_.get());
  }

  // What a class lacks its objects do not have, so that Basic does not try.
  Any SAL_CALL queryInterface(const css::uno::Type& type) override;

  Reference<css::beans::XIntrospectionAccess> SAL_CALL getIntrospection() override {
    return AtTheBorder([&]() -> Reference<css::beans::XIntrospectionAccess> {
      is_python_ = true;
      return new NothingMore;
    });
  }
  Any SAL_CALL invoke(const OUString& name, const Sequence<Any>& given, Sequence<sal_Int16>& changed_places,
                      Sequence<Any>& changed) override;
  void SAL_CALL setValue(const OUString& name, const Any& value) override;
  Any SAL_CALL getValue(const OUString& name) override;
  sal_Bool SAL_CALL hasMethod(const OUString& name) override;
  sal_Bool SAL_CALL hasProperty(const OUString& name) override;

  // Python takes objects that tell of their members alone.
  Sequence<OUString> SAL_CALL getMemberNames() override;
  Sequence<css::script::InvocationInfo> SAL_CALL getInfo() override;
  css::script::InvocationInfo SAL_CALL getInfoForName(const OUString& name, sal_Bool exact) override;

  Reference<css::container::XEnumeration> SAL_CALL createEnumeration() override;
  css::uno::Type SAL_CALL getElementType() override {
    return AtTheBorder([] { return cppu::UnoType<Any>::get(); });
  }
  sal_Bool SAL_CALL hasElements() override { return true; }

  OUString SAL_CALL getDefaultMethodName() override {
    return AtTheBorder([&] { return DefaultName(); });
  }
  OUString SAL_CALL getDefaultPropertyName() override {
    return AtTheBorder([&] { return DefaultName(); });
  }

 private:
  // Those that somebody holds. Never taken down: the office may hold some until it ends.
  static std::unordered_map<const css::uno::XInterface*, Invocation*>& Living() {
    static auto& living = *new std::unordered_map<const css::uno::XInterface*, Invocation*>;
    return living;
  }
  static std::unordered_map<const AutomationObject*, Invocation*>& LivingByDoor() {
    static auto& living = *new std::unordered_map<const AutomationObject*, Invocation*>;
    return living;
  }
  // What the office compares objects by.
  const css::uno::XInterface* Identity() const { return static_cast<const cppu::OWeakObject*>(this); }

  template <class Body>
  decltype(auto) Serve(Body&& body) const;
  const Member* Find(std::string_view name) const;
  OUString DefaultName() const;
  css::script::InvocationInfo InfoOf(const Member& member) const;
  Any Call(MemberId id, const Sequence<Any>& given, Sequence<sal_Int16>& changed_places,
           Sequence<Any>& changed);

  std::shared_ptr<AutomationObject> door_;
  Listeners listeners_;
  bool is_python_ = false;  // who holds it, who asks for the introspection first
};

bool IsPlainProperty(const Member& member) {
  return member.kind == Member::Kind::kProperty && member.parameters.empty();
}

Reference<css::script::XInvocation> Invocation::Of(const std::shared_ptr<Object>& object) {
  RequireOwnThread();
  auto door = AutomationObject::Of(object);
  if (door == nullptr) return {};
  const auto living = LivingByDoor().find(door.get());
  return living != LivingByDoor().end() ? living->second : new Invocation(std::move(door));
}

std::shared_ptr<Object> Invocation::ObjectOf(const Reference<css::uno::XInterface>& invocation) {
  const auto living = Living().find(invocation.get());
  return living != Living().end() ? living->second->door_->object() : nullptr;
}

// The interpreter of Python does not outlive the errors that are Basic's own.
template <class Body>
decltype(auto) Invocation::Serve(Body&& body) const {
  try {
    return OnOwnThread(std::forward<Body>(body));
  } catch (const css::script::BasicErrorException& failure) {
    if (!is_python_) throw;
    throw css::uno::RuntimeException(
        "error " + OUString::number(failure.ErrorCode) + ": " + failure.ErrorMessageArgument, {});
  }
}

Any Invocation::queryInterface(const css::uno::Type& type) {
  return AtTheBorder([&] {
    const automation_server::Class& table = door_->table();
    const auto id = table.Default();
    const bool is_property = id && IsPlainProperty(table.At(*id));
    const bool lacks =
        (type == cppu::UnoType<css::container::XEnumerationAccess>::get() && !table.Enumeration()) ||
        (type == cppu::UnoType<css::script::XDefaultMethod>::get() && (!id || is_property)) ||
        (type == cppu::UnoType<css::script::XDefaultProperty>::get() && !is_property);
    return lacks ? Any() : WeakImplHelper4::queryInterface(type);
  });
}

Any Invocation::invoke(const OUString& name, const Sequence<Any>& given, Sequence<sal_Int16>& changed_places,
                       Sequence<Any>& changed) {
  return Serve([&]() -> Any {
    const std::string called = TextOf(name);
    if (!listeners_.HasMethod(called)) return Call(door_->IdOf(called), given, changed_places, changed);
    listeners_.Call(called, given);
    return {};
  });
}

void Invocation::setValue(const OUString& name, const Any& value) {
  Serve([&] {
    const MemberId id = door_->IdOf(TextOf(name));
    const Member& member = door_->table().At(id);
    const bool takes_objects_only = member.set != nullptr && member.let == nullptr;
    // Python has one word for nothing and for no object.
    const bool is_no_object = takes_objects_only && !value.hasValue();
    door_->Let(id, is_no_object ? Variant(std::shared_ptr<Object>()) : FromOffice(value));
  });
}

Any Invocation::getValue(const OUString& name) {
  return Serve([&] { return ToOffice(door_->Get(door_->IdOf(TextOf(name)))); });
}

sal_Bool Invocation::hasMethod(const OUString& name) {
  return AtTheBorder([&]() -> sal_Bool {
    const std::string asked = TextOf(name);
    const Member* const member = Find(asked);
    return listeners_.HasMethod(asked) || (member != nullptr && !IsPlainProperty(*member));
  });
}

sal_Bool Invocation::hasProperty(const OUString& name) {
  return AtTheBorder([&]() -> sal_Bool {
    const Member* const member = Find(TextOf(name));
    return member != nullptr && IsPlainProperty(*member);
  });
}

Sequence<OUString> Invocation::getMemberNames() {
  return AtTheBorder([&] {
    const auto& members = door_->table().members();
    Sequence<OUString> names(static_cast<sal_Int32>(members.size()));
    std::ranges::transform(members, names.getArray(),
                           [](const Member& member) { return OfficeText(member.name); });
    return names;
  });
}

Sequence<css::script::InvocationInfo> Invocation::getInfo() {
  return AtTheBorder([&] {
    const auto& members = door_->table().members();
    Sequence<css::script::InvocationInfo> infos(static_cast<sal_Int32>(members.size()));
    std::ranges::transform(members, infos.getArray(),
                           [this](const Member& member) { return InfoOf(member); });
    return infos;
  });
}

css::script::InvocationInfo Invocation::getInfoForName(const OUString& name, sal_Bool) {
  return Serve([&] { return InfoOf(door_->table().At(door_->IdOf(TextOf(name)))); });
}

css::script::InvocationInfo Invocation::InfoOf(const Member& member) const {
  css::script::InvocationInfo info;
  info.aName = OfficeText(member.name);
  info.eMemberType =
      IsPlainProperty(member) ? css::script::MemberType_PROPERTY : css::script::MemberType_METHOD;
  info.aType = cppu::UnoType<Any>::get();
  const auto count = static_cast<sal_Int32>(member.parameters.size());
  info.aParamTypes.realloc(count);
  info.aParamModes.realloc(count);
  for (sal_Int32 i = 0; i < count; ++i) {
    const bool by_reference = member.parameters[static_cast<std::size_t>(i)].by_reference;
    info.aParamTypes.getArray()[i] = info.aType;
    info.aParamModes.getArray()[i] =
        by_reference ? css::reflection::ParamMode_INOUT : css::reflection::ParamMode_IN;
  }
  return info;
}

Reference<css::container::XEnumeration> Invocation::createEnumeration() {
  return OnOwnThread([&] { return Reference<css::container::XEnumeration>(new Walk(door_->NewEnum())); });
}

const Member* Invocation::Find(std::string_view name) const {
  const auto id = door_->table().Find(name);
  return id ? &door_->table().At(*id) : nullptr;
}

OUString Invocation::DefaultName() const {
  const auto id = door_->table().Default();
  return id ? OfficeText(door_->table().At(*id).name) : OUString();
}

Any Invocation::Call(MemberId id, const Sequence<Any>& given, Sequence<sal_Int16>& changed_places,
                     Sequence<Any>& changed) {
  // Let go of meanwhile, this object and its door still stand until the call is over.
  const Reference<css::script::XInvocation> itself(this);
  const Member& member = door_->table().At(id);
  Arguments arguments;
  for (sal_Int32 i = 0; i < given.getLength(); ++i) {
    const auto place = static_cast<std::size_t>(i);
    const bool may_lack = place < member.parameters.size() && member.parameters[place].default_value;
    if (may_lack && !given[i].hasValue()) {
      arguments.emplace_back(std::nullopt);
    } else {
      arguments.emplace_back(FromOffice(given[i]));
    }
  }
  const Any result = ToOffice(door_->Call(id, arguments));

  for (std::size_t i = 0; i < arguments.size() && i < member.parameters.size(); ++i) {
    if (!member.parameters[i].by_reference || !arguments[i]) continue;
    const sal_Int32 count = changed.getLength();
    changed_places.realloc(count + 1);
    changed.realloc(count + 1);
    changed_places.getArray()[count] = static_cast<sal_Int16>(i);
    changed.getArray()[count] = ToOffice(*arguments[i]);
  }
  return result;
}

}  // namespace

Reference<css::script::XInvocation> InvocationOf(const std::shared_ptr<Object>& object) {
  return Invocation::Of(object);
}

std::shared_ptr<Object> ObjectBehind(const Reference<css::uno::XInterface>& invocation) {
  return Invocation::ObjectOf(invocation);
}

}  // namespace mirelo::uno
