#include "uno/errors.h"

#include <algorithm>
#include <array>
#include <com/sun/star/reflection/InvocationTargetException.hpp>
#include <com/sun/star/script/BasicErrorException.hpp>
#include <com/sun/star/uno/RuntimeException.hpp>
#include <cstdint>
#include <string>

#include "uno/text.h"

namespace mirelo::uno {

namespace {

// The numbers that Basic knows, too. It drops an error of any other number in silence.
constexpr std::array<std::int32_t, 19> kNumbersOfBasic{5,   6,   7,   9,   11,  13,  53,  67,  75,  91,
                                                       380, 424, 438, 440, 445, 448, 449, 450, 1004};

bool IsKnownToBasic(std::int32_t number) { return std::ranges::count(kNumbersOfBasic, number) > 0; }

}  // namespace

void RaiseInOffice(const RuntimeError& error) {
  const rtl::OUString text = OfficeText(error.Description());
  // Wrapped in the exception that calls by name are said to raise, it would lose its number.
  if (IsKnownToBasic(error.Number())) {
    throw css::script::BasicErrorException(text, {}, error.Number(), text);
  }
  const css::uno::RuntimeException inner(
      OfficeText(error.Source() + ": error " + std::to_string(error.Number()) + ": " + error.Description()),
      {});
  throw css::reflection::InvocationTargetException(inner.Message, {}, css::uno::Any(inner));
}

RuntimeError FromOffice(const css::uno::Exception& failure) {
  return RuntimeError(440, TextOf(failure.Message), "LibreOffice");
}

RuntimeError ErrorInHand() {
  try {
    throw;
  } catch (const css::uno::Exception& failure) {
    return FromOffice(failure);
  } catch (...) {
    return CurrentError();
  }
}

}  // namespace mirelo::uno
