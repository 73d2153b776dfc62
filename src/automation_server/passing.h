#pragma once

#include <concepts>
#include <memory>
#include <type_traits>
#include <utility>

#include "automation/variant.h"
#include "automation_server/crossing.h"

namespace mirelo::automation_server {

// An argument on its way into a parameter of type A, for as long as the call takes. The argument must outlive
// it.
template <class A>
class Passing {
 public:
  static constexpr bool kByReference = false;

  explicit Passing(Variant& argument) : value_(Crossing<std::remove_cvref_t<A>>::From(argument)) {}
  auto& Value() { return value_; }
  void GiveBack() {}

 private:
  std::remove_cvref_t<decltype(Crossing<std::remove_cvref_t<A>>::From(std::declval<Variant&>()))> value_;
};

// What the member may change goes back once it has returned.
template <class T>
requires(!std::is_const_v<T> && !std::derived_from<T, Object>) class Passing<T&> {
 public:
  static constexpr bool kByReference = true;

  explicit Passing(Variant& argument) : argument_(&argument), value_(Crossing<T>::From(argument)) {}
  T& Value() { return value_; }
  void GiveBack() { *argument_ = Crossing<T>::To(std::move(value_)); }

 private:
  Variant* argument_;
  T value_;
};

template <std::derived_from<Object> T>
class Passing<T&> {
 public:
  static constexpr bool kByReference = false;

  explicit Passing(Variant& argument) : object_(Crossing<T>::From(argument)) {}
  T& Value() { return *object_; }
  void GiveBack() {}

 private:
  std::shared_ptr<T> object_;
};

// A variant is the member's at once, so that the caller has it changed also when the member fails then.
template <>
class Passing<Variant&> {
 public:
  static constexpr bool kByReference = true;

  explicit Passing(Variant& argument) : argument_(&argument) {}
  Variant& Value() { return *argument_; }
  void GiveBack() {}

 private:
  Variant* argument_;
};

}  // namespace mirelo::automation_server
