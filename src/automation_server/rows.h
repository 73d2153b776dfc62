#pragma once

#include <concepts>
#include <memory>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "automation/event.h"
#include "automation/variant.h"
#include "automation_server/calling.h"
#include "automation_server/class.h"
#include "automation_server/crossing.h"
#include "automation_server/enumeration.h"
#include "automation_server/member.h"
#include "core/property.h"

// What the rows of a class's table are made of. A source that holds a table names the class `Self` and then
// has one line for each member:
//
//   GET(Seconds)                              a property that can be read
//   GET_LET(arrTickers)                       and assigned; GET_SET of a reference, SET of one only set
//   METHOD(DownloadURL, "URL", Optional("Host", "127.0.0.1"))
//   INDEXED(Borders, "Index")                 a property that takes arguments
//   ENUMERATION(NewEnum)
//   EVENT(OnStatusText, "sText")
//
// Types, and whether a parameter is by reference, are those of the member function. A row does not compile
// when a type cannot cross, when it has too few names or too many, and when a default is none for its
// parameter. In our classes a property is two functions of one name, which is why rows need no more than
// that.
#define GET(Name) PropertyRow(#Name).Get(&Self::Name)
#define GET_LET(Name) PropertyRow(#Name).Get(&Self::Name).Let(&Self::Name)
#define GET_SET(Name) PropertyRow(#Name).Get(&Self::Name).Set(&Self::Name)
#define GET_LET_SET(Name) PropertyRow(#Name).Get(&Self::Name).Let(&Self::Name).Set(&Self::Name)
#define SET(Name) PropertyRow(#Name).Set(&Self::Name)
#define FIELD(Name) FieldRow(#Name, &Self::Name)
#define METHOD(Name, ...) MethodRow(#Name, &Self::Name __VA_OPT__(, ) __VA_ARGS__)
#define DEFAULT_METHOD(Name, ...) AsDefault(METHOD(Name __VA_OPT__(, ) __VA_ARGS__))
#define INDEXED(Name, ...) AsProperty(METHOD(Name __VA_OPT__(, ) __VA_ARGS__))
#define ENUMERATION(Name) EnumerationRow(#Name, &Self::Name)
#define EVENT(Name, ...) EventRow(#Name, &Self::Name __VA_OPT__(, ) __VA_ARGS__)

namespace mirelo::automation_server {

struct PropertyRow : Member {
  explicit PropertyRow(std::string_view member_name) { name = member_name; }

  template <class C, GoesOut R>
  PropertyRow& Get(R (C::*function)() const) {
    return GetBy<C, R>(function);
  }
  template <class C, GoesOut R>
  requires(!std::is_reference_v<R>) PropertyRow& Get(R (C::*function)()) { return GetBy<C, R>(function); }
  template <class C, GoesIn V>
  PropertyRow& Let(void (C::*function)(V)) {
    let = Putting(function);
    return *this;
  }
  // A reference, to an object of one class or of any.
  template <class C, class T>
  PropertyRow& Set(void (C::*function)(std::shared_ptr<T>)) {
    if (get == nullptr) {
      type = ValueType::kObject;
      of = Declares<T>::Type();
    }
    set = Putting(function);
    return *this;
  }
  template <class C>
  PropertyRow& Set(void (C::*function)(Variant)) {
    set = Putting(function);
    return *this;
  }
  template <class C>
  PropertyRow& Set(void (C::*function)(const Variant&)) {
    set = Putting(function);
    return *this;
  }

 private:
  template <class C, class R, class Function>
  PropertyRow& GetBy(Function function) {
    type = Crossing<std::remove_cvref_t<R>>::kType;
    of = Declares<std::remove_cvref_t<R>>::Type();
    get = [function](const ObjectPtr& object, std::span<Variant>) {
      return Crossing<std::remove_cvref_t<R>>::To((As<C>(*object).*function)());
    };
    return *this;
  }
  template <class C, class V>
  static Put Putting(void (C::*function)(V)) {
    return [function](const ObjectPtr& object, std::span<Variant>, const Variant& value) {
      (As<C>(*object).*function)(Crossing<std::remove_cvref_t<V>>::From(value));
    };
  }
};

template <class C, GoesOut T>
Member FieldRow(std::string_view name, Property<T> C::*field) {
  return {.name = name,
          .type = Crossing<T>::kType,
          .of = Declares<T>::Type(),
          .get = [field](const ObjectPtr& object,
                         std::span<Variant>) { return Crossing<T>::To((As<C>(*object).*field)()); },
          .let = [field](const ObjectPtr& object, std::span<Variant>,
                         const Variant& value) { (As<C>(*object).*field)(Crossing<T>::From(value)); }};
}

template <class R>
void DeclareResult(Member& row) {
  if constexpr (!std::is_void_v<R>) {
    row.type = Crossing<std::remove_cvref_t<R>>::kType;
    row.of = Declares<std::remove_cvref_t<R>>::Type();
  }
}

template <class C, class R, class... A, class Function, class... Names>
Member MethodRowOf(std::string_view name, Function function, const Names&... names) {
  Member row{.name = name, .kind = Member::Kind::kMethod, .parameters = {ParameterRow<A>(names)...}};
  DeclareResult<R>(row);
  row.get = [function](const ObjectPtr& object, std::span<Variant> arguments) {
    C& self = As<C>(*object);
    return CallWith<R, A...>(arguments, [&](auto&... passed) -> R { return (self.*function)(passed...); });
  };
  return row;
}
template <class C, IsResult R, GoesIn... A, class... Names>
requires(sizeof...(A) == sizeof...(Names) && (Describes<Names, A> && ...)) Member
    MethodRow(std::string_view name, R (C::*function)(A...), const Names&... names) {
  return MethodRowOf<C, R, A...>(name, function, names...);
}
template <class C, IsResult R, GoesIn... A, class... Names>
requires(sizeof...(A) == sizeof...(Names) && (Describes<Names, A> && ...)) Member
    MethodRow(std::string_view name, R (C::*function)(A...) const, const Names&... names) {
  return MethodRowOf<C, R, A...>(name, function, names...);
}

// By a function of the object and its arguments.
template <std::derived_from<Object> C, IsResult R, GoesIn... A, class... Names>
requires(sizeof...(A) == sizeof...(Names) && (Describes<Names, A> && ...)) Member
    MethodRow(std::string_view name, R (*function)(C&, A...), const Names&... names) {
  Member row{.name = name, .kind = Member::Kind::kMethod, .parameters = {ParameterRow<A>(names)...}};
  DeclareResult<R>(row);
  row.get = [function](const ObjectPtr& object, std::span<Variant> arguments) {
    C& self = As<C>(*object);
    return CallWith<R, A...>(arguments, [&](auto&... passed) -> R { return function(self, passed...); });
  };
  return row;
}
inline Member AsProperty(Member row) {
  row.kind = Member::Kind::kProperty;
  return row;
}

// A property that takes arguments, read and assigned by functions of the object; to the latter the value
// comes before the arguments.
template <std::derived_from<Object> C, GoesOut R, GoesIn V, GoesIn... A, class... Names>
requires(sizeof...(A) == sizeof...(Names)) Member
    IndexedRow(std::string_view name, R (*get)(C&, A...), void (*let)(C&, V, A...), const Names&... names) {
  Member row = AsProperty(MethodRow(name, get, names...));
  row.let = [let](const ObjectPtr& object, std::span<Variant> arguments, const Variant& value) {
    C& self = As<C>(*object);
    CallWith<void, A...>(arguments, [&](auto&... passed) {
      let(self, Crossing<std::remove_cvref_t<V>>::From(value), passed...);
    });
  };
  return row;
}

inline Member AsDefault(Member row) {
  row.is_default = true;
  return row;
}

template <class C, class Enumerator>
Member EnumerationRow(std::string_view name, Enumerator (C::*function)() const) {
  return {.name = name,
          .kind = Member::Kind::kEnumeration,
          .type = ValueType::kObject,
          .get = [function](const ObjectPtr& object, std::span<Variant>) -> Variant {
            return std::make_shared<EnumerationBy<Enumerator>>((As<C>(*object).*function)());
          }};
}

// For a class whose items have numbers.
template <std::derived_from<Object> C>
Member NumberedItemsRow(std::string_view name) {
  return {.name = name,
          .kind = Member::Kind::kEnumeration,
          .type = ValueType::kObject,
          .get = [](const ObjectPtr& object, std::span<Variant>) -> Variant {
            return std::make_shared<EnumerationByNumber<C>>(std::dynamic_pointer_cast<C>(object));
          }};
}

template <class C, GoesOut... A, std::convertible_to<std::string_view>... Names>
requires(sizeof...(A) == sizeof...(Names)) EventMember
    EventRow(std::string_view name, Event<A...> C::*event, const Names&... names) {
  return {
      .name = name,
      .parameters = {Parameter{.name = names,
                               .type = Crossing<std::remove_cvref_t<A>>::kType,
                               .of = Declares<std::remove_cvref_t<A>>::Type()}...},
      .subscribe =
          [event](Object& object, EventMember::Handler handler) {
            return (As<C>(object).*event).Subscribe([handler = std::move(handler)](const auto&... values) {
              const std::vector<Variant> arguments{Crossing<std::remove_cvref_t<A>>::To(values)...};
              handler(arguments);
            });
          },
      .unsubscribe = [event](Object& object,
                             EventMember::Cookie cookie) { (As<C>(object).*event).Unsubscribe(cookie); }};
}

// A class whose objects clients make by its name, or one whose objects they are only handed.
template <std::derived_from<Object> C>
Class Creatable(std::string_view name, std::vector<Member> members, std::vector<EventMember> events = {}) {
  return Class(
      name, typeid(C), [](const Object& object) { return dynamic_cast<const C*>(&object) != nullptr; },
      [] { return std::make_shared<C>(); }, std::move(members), std::move(events));
}
template <std::derived_from<Object> C>
Class HandedOut(std::string_view name, std::vector<Member> members, std::vector<EventMember> events = {}) {
  return Class(
      name, typeid(C), [](const Object& object) { return dynamic_cast<const C*>(&object) != nullptr; },
      nullptr, std::move(members), std::move(events));
}

}  // namespace mirelo::automation_server
