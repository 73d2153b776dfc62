#include "adapters/headless/linux_system.h"

#include <gtest/gtest.h>
#include <syslog.h>

#include <string>

namespace mirelo::headless {
namespace {

TEST(LinuxSystem, HasNoPlatformId) {
  LinuxSystem system;
  EXPECT_EQ(system.GetVersionExA(156), std::nullopt);
  EXPECT_EQ(system.GetVersionExA(148), std::nullopt);
}

TEST(LinuxSystem, PosesAsTheNtFamilyWhenTold) {
  EXPECT_EQ(LinuxSystem(true).GetVersionExA(156), host::OperatingSystem::kPlatformNt);
}

// What the syslog would get, seen through its echo to the standard error stream.
std::string Logged(const std::string& text, int event_type) {
  openlog("mirelo", LOG_PERROR, LOG_USER);
  ::testing::internal::CaptureStderr();
  LinuxSystem().LogEvent(text, event_type);
  closelog();
  return ::testing::internal::GetCapturedStderr();
}

TEST(LinuxSystem, WritesToTheSyslogAsItIs) {
  EXPECT_EQ(Logged("100% %s %n of a failure report", host::OperatingSystem::kEventError),
            "mirelo: 100% %s %n of a failure report\n");
  EXPECT_EQ(Logged("information", 4), "mirelo: information\n");
}

}  // namespace
}  // namespace mirelo::headless
