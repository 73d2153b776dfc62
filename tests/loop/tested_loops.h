#pragma once

#include <gtest/gtest.h>

#include <string>

#include "adapters/poll/poll_loop.h"
#ifdef _WIN32
#include "loop/loop_in_a_program.h"
#else
#include "adapters/qt/qt_loop.h"
#include "loop/queued_office.h"
#endif

namespace mirelo {

// The message loops, of which all tests of this folder hold.
#ifdef _WIN32
using TestedLoops = ::testing::Types<poll::PollLoop, LoopInAProgram>;
#else
using TestedLoops = ::testing::Types<poll::PollLoop, qt::QtLoop, LoopInAnOffice>;
#endif

struct LoopNames {
  template <class Loop>
  static std::string GetName(int index) {
#ifdef _WIN32
    constexpr const char* kNames[] = {"Poll", "Program"};
#else
    constexpr const char* kNames[] = {"Poll", "Qt", "Office"};
#endif
    return kNames[index];
  }
};

template <class Loop>
class LoopTest : public ::testing::Test {};

}  // namespace mirelo
