#pragma once

#include <utility>

#include "diagnostics/step.h"

namespace mirelo {

// The statements of a routine that skips what fails and reports nothing, and that has no place on the call
// stack. It reads like a routine with a frame:
//
//   SkippingFailures([&](SkippingFrame& frame) {
//     STEP(Stream->DisConnect());
//     STEP(Stream = nullptr);
//   });
class SkippingFrame {
 public:
  template <class Statement>
  void step(Statement&& statement) {
    try {
      statement();
    } catch (...) {  // skipped
    }
  }

  // Evaluates an If condition; when that fails the block is entered.
  template <class Condition>
  bool test(Condition&& condition) {
    bool holds = true;
    step([&] { holds = condition(); });
    return holds;
  }
};

template <class Body>
void SkippingFailures(Body&& body) {
  SkippingFrame frame;
  std::forward<Body>(body)(frame);
}

}  // namespace mirelo
