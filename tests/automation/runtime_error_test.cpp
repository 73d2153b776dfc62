#include "automation/runtime_error.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <stdexcept>
#include <string>

#include "support/error_number.h"

namespace mirelo {
namespace {

TEST(RuntimeError, CarriesNumberDescriptionAndSource) {
  const RuntimeError error(ErrorNumber(0x8004427D), "Invalid AppName value", "Mirelo.CAppSettings.AppName");
  EXPECT_EQ(error.Number(), -2147204483);
  EXPECT_EQ(error.Description(), "Invalid AppName value");
  EXPECT_EQ(error.Source(), "Mirelo.CAppSettings.AppName");
  EXPECT_STREQ(error.what(), "Invalid AppName value");
}

TEST(RuntimeError, HasTheLibraryAsItsSourceUnlessToldOtherwise) {
  EXPECT_EQ(RuntimeError(5, "x").Source(), "Mirelo");
}

TEST(Errors, HaveTheirStandardNumbersAndTexts) {
  const struct {
    RuntimeError error;
    std::int32_t number;
    const char* text;
  } kErrors[] = {
      {Errors::InvalidProcedureCall(), 5, "Invalid procedure call or argument"},
      {Errors::Overflow(), 6, "Overflow"},
      {Errors::OutOfMemory(), 7, "Out of memory"},
      {Errors::SubscriptOutOfRange(), 9, "Subscript out of range"},
      {Errors::DivisionByZero(), 11, "Division by zero"},
      {Errors::TypeMismatch(), 13, "Type mismatch"},
      {Errors::FileNotFound(), 53, "File not found"},
      {Errors::PathFileAccess(), 75, "Path/File access error"},
      {Errors::ObjectNotSet(), 91, "Object variable or With block variable not set"},
      {Errors::InvalidPropertyValue(), 380, "Invalid property value"},
      {Errors::InvalidPropertyArrayIndex(), 381, "Invalid property array index"},
      {Errors::ObjectRequired(), 424, "Object required"},
      {Errors::ActionNotSupported(), 445, "Object doesn't support this action"},
      {Errors::KeyAlreadyUsed(), 457, "This key is already associated with an element of this collection"},
  };
  for (const auto& [error, number, text] : kErrors) {
    EXPECT_EQ(error.Number(), number);
    EXPECT_EQ(error.Description(), text);
    EXPECT_EQ(error.Source(), "Mirelo");
  }
}

template <class Exception>
RuntimeError Caught(const Exception& exception) {
  try {
    throw exception;
  } catch (...) {
    return CurrentError();
  }
}

TEST(CurrentError, IsTheErrorItselfWhenOneOfOurs) {
  const RuntimeError error = Caught(RuntimeError(77, "text", "source"));
  EXPECT_EQ(error.Number(), 77);
  EXPECT_EQ(error.Description(), "text");
  EXPECT_EQ(error.Source(), "source");
}

TEST(CurrentError, IsNumber7ForExhaustedMemory) { EXPECT_EQ(Caught(std::bad_alloc()).Number(), 7); }

TEST(CurrentError, IsNumber440WithTheTextOfAnyOtherException) {
  const RuntimeError error = Caught(std::out_of_range("far away"));
  EXPECT_EQ(error.Number(), 440);
  EXPECT_EQ(error.Description(), "far away");
}

TEST(CurrentError, IsNumber440ForWhatIsNoException) {
  EXPECT_EQ(Caught(5).Number(), 440);
  EXPECT_EQ(Caught(5).Description(), "Automation error");
}

RuntimeError Broken() { return RuntimeError(9, "Broken"); }

TEST(AnyFailureAs, RaisesWhateverFailsAsThatError) {
  const std::function<void()> failures[] = {
      [] { throw Errors::TypeMismatch(); },
      [] { throw std::logic_error("odd"); },
      [] { throw 5; },
  };
  for (const auto& fails : failures) {
    EXPECT_EQ(testing::NumberOf([&] { AnyFailureAs(Broken, fails); }), 9);
  }
}

TEST(AnyFailureAs, AnswersWhatTheBodyAnswersAndMakesNoError) {
  int number = 5;
  const auto never = []() -> RuntimeError {
    ADD_FAILURE() << "an error was made";
    return Broken();
  };
  int& same = AnyFailureAs(never, [&]() -> int& { return number; });
  EXPECT_EQ(&same, &number);
}

}  // namespace
}  // namespace mirelo
