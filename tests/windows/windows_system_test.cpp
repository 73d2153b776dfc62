#include "adapters/windows/windows_system.h"

#include <gtest/gtest.h>

#include <string>

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

constexpr int kInformation = 4;  // as Windows numbers it

// Nobody reads the log of events under Wine; this is what it is given.
TEST(WindowsLog, IsGivenTextsInWindowsOwnLetters) {
  using host::OperatingSystem;
  const windows::LogEntry entry =
      windows::LogEntryOf("Typen unvertr\u00E4glich \u20AC", OperatingSystem::kEventError);
  EXPECT_EQ(entry.text, L"Typen unvertr\u00E4glich \u20AC");
  EXPECT_EQ(entry.type, 1) << "an error";
  EXPECT_EQ(windows::LogEntryOf("", kInformation).type, 4);
}

TEST(WindowsLog, IsGivenNoLongerTextThanItTakes) {
  const auto text_of = [](const std::string& text) { return windows::LogEntryOf(text, 1).text; };
  EXPECT_EQ(text_of(std::string(31'839, 'x')).size(), 31'839U);
  EXPECT_EQ(text_of(std::string(31'840, 'x')).size(), 31'839U);
  EXPECT_EQ(text_of(std::string("a\0b", 3)), L"a b");
}

}  // namespace
}  // namespace mirelo::testing
