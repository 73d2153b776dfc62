#pragma once

#include <string_view>
#include <utility>

#include "automation/runtime_error.h"

namespace mirelo {

// The frame that the system's worker routines and event routines share.
//
// A routine's body is cut into statements, each of which can be run again. When one fails, the error handler is asked:
// retry runs that statement again, ignore goes on with the next one, abort empties the call stack and leaves the
// routine with its default result, raising nothing.
//
//   void frmMirelo::ButAdd_Click() {
//     Routine("Mirelo.frmMirelo.ButAdd_Click", [&](Frame& frame) {
//       if (frame.test([&] { return !txtTicker.Text().empty(); })) {
//         STEP(AddTicker(UCase(txtTicker.Text())));
//       }
//       STEP(txtTicker.SetFocus());
//       frame.pop();
//     });
//   }
//
// The frame pushes the name on the call stack and does not pop it by itself, since some early exits leave it there on
// purpose: a body pops with frame.pop() at its normal end and before every return that should pop. The push is a
// statement of the routine as well.
class Frame {
 public:
  // Runs one statement.
  template <class Statement>
  void step(Statement&& statement) {
    for (;;) {
      try {
        statement();
        return;
      } catch (const Abort&) {
        throw;
      } catch (...) {
        if (!AskWhetherToRetry()) return;
      }
    }
  }

  // Evaluates an If condition. When its failure is ignored the block is entered, its first statement being the next.
  template <class Condition>
  bool test(Condition&& condition) {
    bool holds = true;
    step([&] { holds = condition(); });
    return holds;
  }

  // Pops the routine's name; a statement like any other.
  void pop();

 private:
  struct Abort {};
  template <class Body>
  friend void Routine(std::string_view name, Body&& body);
  template <class Result, class Body>
  friend Result Function(std::string_view name, Result initial, Body&& body);

  explicit Frame(std::string_view name);

  // Inside a catch block: reports the failure. True to retry, false to ignore; throws Abort when the user aborts,
  // after the call stack was cleared. What the error handler itself raises leaves the routine.
  bool AskWhetherToRetry();
};

// A routine without result.
template <class Body>
void Routine(std::string_view name, Body&& body) {
  try {
    Frame frame(name);
    std::forward<Body>(body)(frame);
  } catch (const Frame::Abort&) {
  }
}

// A routine with a result: `body` gets the frame and the result to set, which starts as `initial`. An aborted one
// returns `initial`.
template <class Result, class Body>
Result Function(std::string_view name, Result initial, Body&& body) {
  Result result = initial;
  try {
    Frame frame(name);
    std::forward<Body>(body)(frame, result);
    return result;
  } catch (const Frame::Abort&) {
    return initial;
  }
}

// One statement of a routine, where the frame is called `frame`.
#define STEP(...) frame.step([&] { __VA_ARGS__; })

}  // namespace mirelo
