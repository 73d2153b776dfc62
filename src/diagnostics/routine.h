#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

#include "automation/runtime_error.h"
#include "diagnostics/step.h"

namespace mirelo {

// The first and the last value of a loop's counter; a loop whose last lies below its first runs not at all.
struct Bounds {
  std::int32_t first = 0;
  std::int32_t last = -1;

  class Counter {
   public:
    explicit Counter(std::int64_t value) : value_(value) {}
    std::int32_t operator*() const { return static_cast<std::int32_t>(value_); }
    Counter& operator++() {
      ++value_;
      return *this;
    }
    friend bool operator==(Counter a, Counter b) = default;

   private:
    std::int64_t value_;  // wider than the bounds, to step past the highest
  };
  Counter begin() const { return Counter(first); }
  Counter end() const { return Counter(std::max(std::int64_t{first}, std::int64_t{last} + 1)); }
};

// The frame that the system's worker routines and event routines share.
//
// A routine's body is cut into statements, each of which can be run again. When one fails, the error handler
// is asked: retry runs that statement again, ignore goes on with the next one, abort empties the call stack
// and leaves the routine with the default of its result's type, raising nothing.
//
//   void frmMirelo::ButAdd_Click() {
//     Routine("Mirelo.frmMirelo.ButAdd_Click", [&](Frame& frame) {
//       if (frame.test([&] { return !txtTicker.Text().empty(); })) {
//         STEP(AddTicker(UCase(txtTicker.Text())));
//       }
//       for (const std::int32_t row : frame.loop([&] { return Bounds{1, Grid.Rows() - 1}; })) {
//         STEP(Grid.TextMatrix(row, 0, ""));
//       }
//       STEP(txtTicker.SetFocus());
//       frame.pop();
//     });
//   }
//
// Whatever can fail belongs in a statement: a failure between two of them leaves the routine as if it had no
// frame. A statement that sets a variable computes the value first and assigns it last, so that a failed one
// leaves no trace and can run again.
//
// The frame pushes the name on the call stack and does not pop it by itself, since some early exits leave it
// there on purpose: a body pops with frame.pop() at its normal end and before every return that should pop.
// The push is a statement of the routine as well.
//
// From ignore_failures() to report_failures() a statement that fails is skipped without asking anybody, and
// the next one runs.
//
// Without a failure a statement costs nothing beyond its own work.
class Frame {
 public:
  Frame(const Frame&) = delete;
  Frame& operator=(const Frame&) = delete;

  // Runs one statement.
  template <class Statement>
  void step(Statement&& statement) {
    for (;;) {
      try {
        statement();
        return;
      } catch (const Exit&) {
        throw;
      } catch (...) {
        if (ignoring_ || !AskWhetherToRetry()) return;
      }
    }
  }

  // Evaluates an If condition. When its failure is ignored the block is entered, its first statement being
  // the next.
  template <class Condition>
  bool test(Condition&& condition) {
    bool holds = true;
    step([&] { holds = condition(); });
    return holds;
  }

  // The numbers from the first to the last of the bounds that `bounds` evaluates to, once. When evaluating
  // them fails and that is ignored, the block runs once, with an unset counter, since there are no bounds to
  // count to.
  template <class Evaluate>
  Bounds loop(Evaluate&& bounds) {
    Bounds counted{0, 0};
    step([&] { counted = bounds(); });
    return counted;
  }

  // Pops the routine's name; a statement like any other.
  void pop();

  void ignore_failures() { ignoring_ = true; }
  void report_failures() { ignoring_ = false; }

 private:
  // Leaves the routine from within a statement: because the user aborted it, or with an error of the error
  // handler itself, which the routine that failed has no handling for.
  struct Exit {
    std::optional<RuntimeError> error;
  };

  template <class Body>
  friend void Routine(std::string_view name, Body&& body);
  template <class Result, class Body>
  friend Result Function(std::string_view name, Result initial, std::type_identity_t<Result> on_abort,
                         Body&& body);

  explicit Frame(std::string_view name);

  // Inside a catch block: reports the failure. True to retry, false to ignore; throws Exit to leave.
  bool AskWhetherToRetry();
  static void RaiseErrorOf(const Exit& exit);

  bool ignoring_ = false;
};

// A routine without result.
template <class Body>
void Routine(std::string_view name, Body&& body) {
  try {
    Frame frame(name);
    std::forward<Body>(body)(frame);
  } catch (const Frame::Exit& exit) {
    Frame::RaiseErrorOf(exit);
  }
}

// A routine with a result: `body` gets the frame and the result to set, which starts as `initial`. An aborted
// one returns `on_abort`, whatever the result was by then.
template <class Result, class Body>
Result Function(std::string_view name, Result initial, std::type_identity_t<Result> on_abort, Body&& body) {
  Result result = std::move(initial);
  try {
    Frame frame(name);
    std::forward<Body>(body)(frame, result);
    return result;
  } catch (const Frame::Exit& exit) {
    Frame::RaiseErrorOf(exit);
    return on_abort;
  }
}

// A routine with a result, the usual case: an aborted one returns the default of its type: 0, empty, false or
// nothing.
template <class Result, class Body>
Result Function(std::string_view name, Result initial, Body&& body) {
  return Function(name, std::move(initial), Result{}, std::forward<Body>(body));
}

}  // namespace mirelo
