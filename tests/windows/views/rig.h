#pragma once

#include <gmock/gmock.h>

#include <exception>

#include "adapters/windows/views/native_desktop.h"
#include "adapters/windows/window_loop.h"
#include "automation/runtime_error.h"
#include "host/host.h"
#include "support/test_host.h"
#include "windows/views/person.h"

namespace mirelo::windows {

// A desktop of Windows, and a person at it.
struct Desk {
  Desk() { host.Use(loop).Use(desktop); }

  WindowLoop loop{[](const std::exception_ptr& failure) {
    try {
      std::rethrow_exception(failure);
    } catch (...) {
      ADD_FAILURE() << CurrentError().Description();
    }
  }};
  NativeDesktop desktop{loop};
  testing::TestHost host;
  host::HostScope installed{host};
  Person person{desktop};
};

class OnTheDesktop : public ::testing::Test, protected Desk {};

}  // namespace mirelo::windows
