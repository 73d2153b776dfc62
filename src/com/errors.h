#pragma once

#include "com/system.h"

#include <utility>

#include "automation/runtime_error.h"

namespace mirelo::com {

// The number under which clients know the error: those of the automation run time become theirs again in
// Err.Number.
HRESULT ResultOf(const RuntimeError& error);
// What a client, or Windows, tells in place of success: by its number, or with the text and source that come
// with it.
RuntimeError ErrorOf(HRESULT result);
RuntimeError ErrorOf(HRESULT result, EXCEPINFO& told);  // frees what it holds
// Raises it.
inline void Require(HRESULT result) {
  if (FAILED(result)) throw ErrorOf(result);
}

// Tells the caller of the error: as the thread's error information, and where he wants it there.
void Describe(const RuntimeError& error, EXCEPINFO* place);

// For a catch block at the border: describes what was caught, and returns what clients are to know it by.
HRESULT Told(EXCEPINFO* place) noexcept;

// Runs the body of whatever clients call. No exception leaves it: it is described, and the result says that
// it is, or has its number where there is no place for a description.
template <class Body>
HRESULT AtTheBorder(Body&& body, EXCEPINFO* place = nullptr) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    return Told(place);
  }
}

}  // namespace mirelo::com
