#pragma once

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

#include "adapters/poll/poll_loop.h"
#include "adapters/qt/qt_loop.h"
#include "loop/queued_office.h"

namespace mirelo {

// The message loops, of which all tests of this folder hold.
using TestedLoops = ::testing::Types<poll::PollLoop, qt::QtLoop, LoopInAnOffice>;

struct LoopNames {
  template <class Loop>
  static std::string GetName(int /*index*/) {
    if (std::is_same_v<Loop, LoopInAnOffice>) return "Office";
    return std::is_same_v<Loop, qt::QtLoop> ? "Qt" : "Poll";
  }
};

template <class Loop>
class LoopTest : public ::testing::Test {};

}  // namespace mirelo
