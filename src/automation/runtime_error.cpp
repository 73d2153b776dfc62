#include "automation/runtime_error.h"

#include <new>
#include <utility>

namespace mirelo {

RuntimeError::RuntimeError(std::int32_t number, std::string description, std::string source)
    : number_(number), description_(std::move(description)), source_(std::move(source)) {}

RuntimeError CurrentError() {
  try {
    throw;
  } catch (const RuntimeError& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return Errors::OutOfMemory();
  } catch (const std::exception& error) {
    return RuntimeError(440, error.what());
  } catch (...) {
    return RuntimeError(440, "Automation error");
  }
}

namespace Errors {

RuntimeError InvalidProcedureCall() { return RuntimeError(5, "Invalid procedure call or argument"); }
RuntimeError Overflow() { return RuntimeError(6, "Overflow"); }
RuntimeError OutOfMemory() { return RuntimeError(7, "Out of memory"); }
RuntimeError SubscriptOutOfRange() { return RuntimeError(9, "Subscript out of range"); }
RuntimeError DivisionByZero() { return RuntimeError(11, "Division by zero"); }
RuntimeError TypeMismatch() { return RuntimeError(13, "Type mismatch"); }
RuntimeError FileNotFound() { return RuntimeError(53, "File not found"); }
RuntimeError PathFileAccess() { return RuntimeError(75, "Path/File access error"); }
RuntimeError ObjectNotSet() { return RuntimeError(91, "Object variable or With block variable not set"); }
RuntimeError InvalidPropertyValue() { return RuntimeError(380, "Invalid property value"); }
RuntimeError InvalidPropertyArrayIndex() { return RuntimeError(381, "Invalid property array index"); }
RuntimeError ObjectRequired() { return RuntimeError(424, "Object required"); }
RuntimeError CannotCreateObject() { return RuntimeError(429, "ActiveX component can't create object"); }
RuntimeError MemberNotFound() { return RuntimeError(438, "Object doesn't support this property or method"); }
RuntimeError ActionNotSupported() { return RuntimeError(445, "Object doesn't support this action"); }
RuntimeError NamedArgumentNotFound() { return RuntimeError(448, "Named argument not found"); }
RuntimeError ArgumentNotOptional() { return RuntimeError(449, "Argument not optional"); }
RuntimeError WrongNumberOfArguments() {
  return RuntimeError(450, "Wrong number of arguments or invalid property assignment");
}
RuntimeError KeyAlreadyUsed() {
  return RuntimeError(457, "This key is already associated with an element of this collection");
}

}  // namespace Errors
}  // namespace mirelo
