#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string_view>
#include <utility>

#include "automation/runtime_error.h"

namespace mirelo::testing {

// The number of the error that `call` raises, 0 without one.
template <class Call>
std::int32_t NumberOf(Call&& call) {
  try {
    call();
    return 0;
  } catch (const RuntimeError& error) {
    return error.Number();
  }
}

// The error that `call` raises; the test fails when it raises none.
template <class Call>
RuntimeError ErrorOf(Call&& call) {
  try {
    call();
  } catch (const RuntimeError& error) {
    return error;
  }
  ADD_FAILURE() << "no error was raised";
  return RuntimeError(0, "");
}

// `number` as its 32 bits: 0x80044284.
inline void ExpectError(const RuntimeError& error, std::uint32_t number, std::string_view description,
                        std::string_view source) {
  EXPECT_EQ(error.Number(), ErrorNumber(number));
  EXPECT_EQ(error.Description(), description);
  EXPECT_EQ(error.Source(), source);
}

// `call` raises an error of this number and text, whoever raises it.
template <class Call>
void ExpectRefusal(const RuntimeError& refusal, Call&& call) {
  SCOPED_TRACE(refusal.Description());
  const RuntimeError raised = ErrorOf(std::forward<Call>(call));
  EXPECT_EQ(raised.Number(), refusal.Number());
  EXPECT_EQ(raised.Description(), refusal.Description());
}

}  // namespace mirelo::testing
