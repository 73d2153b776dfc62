#pragma once

#include <concepts>
#include <cstddef>
#include <span>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "automation/variant.h"
#include "automation_server/crossing.h"
#include "automation_server/member.h"
#include "automation_server/passing.h"

// How a member is called: what describes its parameters, and the arguments on their way into them.

namespace mirelo::automation_server {

// A parameter that may be left out, and what stands in for it then.
template <class T>
struct Optional {
  explicit Optional(std::string_view parameter, T value = {}) : name(parameter), default_value(value) {}
  std::string_view name;
  T default_value;
};
Optional(std::string_view)->Optional<Variant>;

// Whether `Name` can describe a parameter of type A: any name can, an optional's default must be a value of
// that type as it stands.
template <class Name, class A>
concept Describes = std::convertible_to<Name, std::string_view> || requires(const Name& optional) {
  std::remove_cvref_t<A>{optional.default_value};
};

template <class A>
Parameter ParameterRow(std::string_view name) {
  using T = std::remove_cvref_t<A>;
  return {.name = name,
          .type = Crossing<T>::kType,
          .of = Declares<T>::Type(),
          .by_reference = Passing<A>::kByReference};
}
template <class A, class T>
Parameter ParameterRow(const Optional<T>& optional) {
  Parameter parameter = ParameterRow<A>(optional.name);
  if constexpr (GoesOut<A>) {
    parameter.default_value = Crossing<std::remove_cvref_t<A>>::To(optional.default_value);
  } else {
    parameter.default_value = Variant(optional.default_value);
  }
  return parameter;
}

template <class C>
C& As(Object& object) {
  return dynamic_cast<C&>(object);
}

// Calls with the arguments as what the parameters A take, converted from the first to the last.
template <class R, class... A, class Call>
Variant CallWith(std::span<Variant> arguments, Call&& call) {
  return [&]<std::size_t... I>(std::index_sequence<I...>)->Variant {
    std::tuple<Passing<A>...> passed{Passing<A>(arguments[I])...};
    const auto give_back = [&] { (std::get<I>(passed).GiveBack(), ...); };
    if constexpr (std::is_void_v<R>) {
      call(std::get<I>(passed).Value()...);
      give_back();
      return {};
    } else {
      Variant result = Crossing<std::remove_cvref_t<R>>::To(call(std::get<I>(passed).Value()...));
      give_back();
      return result;
    }
  }
  (std::index_sequence_for<A...>());
}

}  // namespace mirelo::automation_server
