#include "adapters/calc/lookout.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>
#include <thread>
#include <utility>

#include "adapters/calc/office.h"
#include "adapters/calc/office_loop.h"

namespace mirelo::calc {

namespace {

// What a step is about to read would be seen once more by a look taken meanwhile. Most steps are shorter than
// this; one that waits for a person or a server must not hold up the others.
constexpr std::chrono::milliseconds kMostSteps{20};

bool IsSame(const std::vector<pollfd>& a, const std::vector<pollfd>& b) {
  return std::ranges::equal(
      a, b, [](const pollfd& x, const pollfd& y) { return x.fd == y.fd && x.events == y.events; });
}

timespec AsTimespec(std::chrono::nanoseconds time) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
  return {.tv_sec = seconds.count(), .tv_nsec = (time - seconds).count()};
}

void Empty(int descriptor) {
  std::array<char, 64> bytes;
  while (::read(descriptor, bytes.data(), bytes.size()) > 0) {
  }
}

}  // namespace

std::shared_ptr<Lookout> Lookout::Of(OfficeLoop& loop, std::shared_ptr<Office> office) {
  std::shared_ptr<Lookout> lookout(new Lookout(loop, std::move(office)));
  std::thread([lookout] { lookout->Run(); }).detach();
  return lookout;
}

Lookout::Lookout(OfficeLoop& loop, std::shared_ptr<Office> office)
    : loop_(&loop), office_(std::move(office)) {
  int ends[2] = {-1, -1};
  const int opened = ::pipe2(ends, O_NONBLOCK | O_CLOEXEC);
  woken_ = poll::Descriptor::Opened(opened < 0 ? opened : ends[0]);
  waking_ = poll::Descriptor(ends[1]);
}

void Lookout::WaitFor(const std::vector<pollfd>& polled) {
  {
    const std::lock_guard lock(mutex_);
    if (IsSame(polled, polled_)) return;
    polled_ = polled;
  }
  Wake();
}

void Lookout::WaitFor(const std::vector<pollfd>& polled, std::optional<std::chrono::nanoseconds> timer) {
  {
    const std::lock_guard lock(mutex_);
    polled_ = polled;
    due_.reset();
    if (timer) due_ = Time::clock::now() + *timer;
  }
  Wake();
}

void Lookout::StepBegins() {
  const std::lock_guard lock(mutex_);
  ++stepping_;
}

void Lookout::StepEnds() {
  {
    const std::lock_guard lock(mutex_);
    --stepping_;
  }
  changed_.notify_one();
}

void Lookout::End() {
  loop_ = nullptr;
  {
    const std::lock_guard lock(mutex_);
    ended_ = true;
  }
  changed_.notify_one();
  Wake();
}

void Lookout::Run() {
  while (IsTimeToLook()) {
    if (Look() && !Post()) return;
  }
}

// Waits while a step is posted, and for a short one to end. False at the end.
bool Lookout::IsTimeToLook() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [&] { return ended_ || !posted_; });
  changed_.wait_for(lock, kMostSteps, [&] { return ended_ || stepping_ == 0; });
  return !ended_;
}

// Waits until something is due; false when it was told to wait for something else meanwhile.
bool Lookout::Look() {
  std::vector<pollfd> polled;
  std::optional<timespec> limit;
  {
    const std::lock_guard lock(mutex_);
    polled = polled_;
    if (due_) limit = AsTimespec(std::max(*due_ - Time::clock::now(), Time::duration::zero()));
  }
  polled.push_back({.fd = woken_.Number(), .events = POLLIN, .revents = 0});
  const int ready = ::ppoll(polled.data(), polled.size(), limit ? &*limit : nullptr, nullptr);
  if (polled.back().revents != 0) {
    Empty(woken_.Number());
    return false;
  }
  return ready >= 0;
}

bool Lookout::Post() {
  {
    const std::lock_guard lock(mutex_);
    if (ended_) return false;
    posted_ = true;
  }
  // The office may keep the step for ever.
  return office_->Post([lookout = weak_from_this()] {
    if (const auto living = lookout.lock()) living->TakeStep();
  });
}

void Lookout::TakeStep() {
  {
    const std::lock_guard lock(mutex_);
    posted_ = false;
    ++stepping_;
  }
  changed_.notify_one();
  if (loop_ != nullptr) loop_->TakePostedStep();
  StepEnds();
}

void Lookout::Wake() const {
  // A full pipe wakes as well as one more byte does.
  if (::write(waking_.Number(), "", 1) < 0) return;
}

}  // namespace mirelo::calc
