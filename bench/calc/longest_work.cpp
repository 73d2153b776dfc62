#include "calc/longest_work.h"

#include <algorithm>
#include <ctime>

namespace mirelo {

namespace {

constexpr std::chrono::milliseconds kBetweenBeats{2};

std::chrono::nanoseconds WorkedByThisThread() {
  timespec time{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

}  // namespace

void LongestWork::Beat() {
  const auto now = WorkedByThisThread();
  if (before_ != std::chrono::nanoseconds::zero()) longest_ = std::max(longest_, now - before_);
  before_ = now;
  timer_ = loop_.StartTimer(kBetweenBeats, [this] { Beat(); });
}

}  // namespace mirelo
