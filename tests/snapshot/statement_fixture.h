#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "snapshot/last_quote_test.h"

namespace mirelo::testing {

// A clock that fails when it is asked for the moment, as often as told. Reports need the moment as well, so a
// failure is told by the number of the call, from 1.
class FaultyClock : public ManualClock {
 public:
  std::set<int> failing_calls;
  std::function<void(int call)> on_now;

  Date Now() override {
    ++calls_;
    if (on_now) on_now(calls_);
    if (failing_calls.contains(calls_)) throw RuntimeError(57, "Device I/O error");
    return ManualClock::Now();
  }

 private:
  int calls_ = 0;
};

// A facade whose statements fail, and a user who mends what is wrong while a report is shown.
class StatementTest : public LastQuoteTest {
 protected:
  StatementTest() {
    host.Use(faulty_clock);
    Show("Ticker,Last,LastVolume,52w High");
  }

  // Done while the first report is open.
  void Mend(std::function<void()> mending) {
    desktop.while_open = [this, mending = std::move(mending)] {
      if (desktop.reports.size() == 1) mending();
    };
  }
  // Breaks the dialog of the first report, so that the failure goes to the routine above.
  void BreakFirstReport() {
    desktop.while_open = [this] {
      if (desktop.reports.size() == 1 && desktop.boxes.empty()) throw Errors::OutOfMemory();
    };
  }

  // A line of the first `count` fields of a ticker's line.
  std::string ShortLine(std::string_view ticker, std::size_t count) const {
    std::vector<std::string> fields = Split(market.Line(ticker), ",");
    fields.resize(count);
    return Join(fields, ",");
  }
  void AnswerWith(std::string reply) {
    internet.answer = [reply = std::move(reply)](const auto&) { return reply; };
  }

  FaultyClock faulty_clock;
};

}  // namespace mirelo::testing
