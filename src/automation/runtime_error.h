#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace mirelo {

// A failure of the automation run time or of one of the system's classes: a number, a text for people and the
// dotted name of the part that raised it. Clients of the public interface see exactly these three.
class RuntimeError : public std::exception {
 public:
  // `number` is the signed 32-bit error number. Small positive numbers are those of the automation run time
  // (see Errors below); numbers from 0x80040000 up are raised by classes of this system.
  RuntimeError(std::int32_t number, std::string description, std::string source = "Mirelo");

  std::int32_t Number() const noexcept { return number_; }
  const std::string& Description() const noexcept { return description_; }
  const std::string& Source() const noexcept { return source_; }

  // The description, for code that knows only std::exception.
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  std::int32_t number_;
  std::string description_;
  std::string source_;
};

// Turns the bit pattern in which component errors are written (0x8004427D) into the signed number they carry.
constexpr std::int32_t ErrorNumber(std::uint32_t bits) { return static_cast<std::int32_t>(bits); }

// For a catch block: what was caught, as a RuntimeError. Itself when it is one, number 7 for exhausted
// memory, number 440 with the exception's text for anything else.
RuntimeError CurrentError();

// Runs `body` and answers its result. Whatever fails in it is raised as the error that `make` makes: callers
// of a component know one error for all that it does not name.
template <class Make, class Body>
decltype(auto) AnyFailureAs(Make&& make, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    throw std::forward<Make>(make)();
  }
}

// The errors of the automation run time, by their standard numbers and texts.
namespace Errors {
RuntimeError InvalidProcedureCall();       // 5
RuntimeError Overflow();                   // 6
RuntimeError OutOfMemory();                // 7
RuntimeError SubscriptOutOfRange();        // 9
RuntimeError DivisionByZero();             // 11
RuntimeError TypeMismatch();               // 13
RuntimeError FileNotFound();               // 53
RuntimeError PathFileAccess();             // 75
RuntimeError ObjectNotSet();               // 91
RuntimeError InvalidPropertyValue();       // 380
RuntimeError InvalidPropertyArrayIndex();  // 381
RuntimeError ObjectRequired();             // 424
RuntimeError CannotCreateObject();         // 429
RuntimeError MemberNotFound();             // 438
RuntimeError ActionNotSupported();         // 445
RuntimeError NamedArgumentNotFound();      // 448
RuntimeError ArgumentNotOptional();        // 449
RuntimeError WrongNumberOfArguments();     // 450
RuntimeError KeyAlreadyUsed();             // 457
}  // namespace Errors

// What a reference refers to; error 91 when it refers to nothing.
template <class Target>
Target& Referred(Target* target) {
  if (target == nullptr) throw Errors::ObjectNotSet();
  return *target;
}

}  // namespace mirelo
