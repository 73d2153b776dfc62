#include "adapters/windows/windows_system.h"

#include <gtest/gtest.h>

namespace mirelo::testing {
namespace {

TEST(WindowsSystem, IsOfTheNtFamilyInBothFormsOfTheRecord) {
  windows::WindowsSystem system;
  EXPECT_EQ(system.GetVersionExA(156), host::OperatingSystem::kPlatformNt);
  EXPECT_EQ(system.GetVersionExA(148), host::OperatingSystem::kPlatformNt);
}

TEST(WindowsSystem, FailsForRecordsThatItDoesNotKnow) {
  windows::WindowsSystem system;
  for (const std::int32_t size : {-1, 0, 100, 157, 100'000}) {
    EXPECT_EQ(system.GetVersionExA(size), std::nullopt) << size;
  }
}

}  // namespace
}  // namespace mirelo::testing
