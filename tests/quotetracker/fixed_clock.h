#pragma once

#include <memory>
#include <utility>

#include "quotetracker/moment.h"

namespace mirelo::quotetracker {

// A clock that stands until it is set. Copies share their time.
class FixedClock {
 public:
  FixedClock(std::string_view date, std::string_view time)
      : now_(std::make_shared<Moment>(ParseMoment(date, time).value())) {}

  Moment operator()() const { return *now_; }
  void Advance(std::chrono::milliseconds by) { *now_ += by; }

 private:
  std::shared_ptr<Moment> now_;
};

}  // namespace mirelo::quotetracker
