#pragma once

#include <gmock/gmock.h>

#include "adapters/windows/views/native_desktop.h"
#include "host/host.h"
#include "support/test_host.h"
#include "windows/views/message_pump.h"
#include "windows/views/person.h"

namespace mirelo::windows {

// A desktop of Windows, and a person at it.
class OnTheDesktop : public ::testing::Test {
 protected:
  OnTheDesktop() { host.Use(loop).Use(desktop); }

  testing::MessagePump loop;
  NativeDesktop desktop{loop};
  testing::TestHost host;
  host::HostScope installed{host};
  Person person{desktop};
};

}  // namespace mirelo::windows
