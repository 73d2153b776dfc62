#include "wire/overriding_registry.h"

#include <gtest/gtest.h>

#include "core/CAppSettings.h"
#include "host/registry_transaction.h"
#include "support/memory_registry.h"
#include "support/test_host.h"

namespace mirelo::wire {
namespace {

class OverriddenSettings : public ::testing::Test {
 protected:
  OverriddenSettings() { host_.Use(registry_); }

  testing::MemoryRegistry stored_;
  OverridingRegistry registry_{stored_};
  testing::TestHost host_;
  host::HostScope scope_{host_};
  CAppSettings settings_;
};

TEST_F(OverriddenSettings, AreReadInPlaceOfTheStoredOnes) {
  settings_.SaveSetting("Settings", "HTTPPort", Variant("16239"));
  registry_.Override("HTTPPort", "8080");
  EXPECT_EQ(settings_.GetSetting("Settings", "HTTPPort", "1").ToText(), "8080");
}

TEST_F(OverriddenSettings, AreFoundWithoutRegardToCase) {
  registry_.Override("httpport", "8080");
  EXPECT_EQ(settings_.GetSetting("Settings", "HTTPPort", "1").ToText(), "8080");
}

TEST_F(OverriddenSettings, AreFoundThoughNothingWasEverStored) {
  registry_.Override("HTTPPort", "8080");
  EXPECT_EQ(settings_.GetSetting("Settings", "HTTPPort", "1").ToText(), "8080");
  EXPECT_EQ(settings_.GetSetting("Settings", "SocketPort", "1").ToText(), "1");
}

TEST_F(OverriddenSettings, AreNotWrittenAndHideWhatIsWritten) {
  registry_.Override("HTTPPort", "8080");
  settings_.SaveSetting("Settings", "HTTPPort", Variant("9090"));
  EXPECT_EQ(settings_.GetSetting("Settings", "HTTPPort", "1").ToText(), "8080");

  host_.Use(stored_);
  EXPECT_EQ(settings_.GetSetting("Settings", "HTTPPort", "1").ToText(), "9090");
}

TEST_F(OverriddenSettings, LeaveTransactionsToTheStoredOnes) {
  registry_.Override("HTTPPort", "8080");
  {
    host::RegistryTransaction together(registry_);
    settings_.SaveSetting("Settings", "Seconds", Variant("7"));
  }
  EXPECT_EQ(settings_.GetSetting("Settings", "Seconds", "none").ToText(), "none");
  host::RegistryTransaction together(registry_);
  settings_.SaveSetting("Settings", "Seconds", Variant("7"));
  EXPECT_EQ(together.Commit(), host::RegistryTransaction::End::Stored);
  EXPECT_EQ(settings_.GetSetting("Settings", "Seconds", "none").ToText(), "7");
}

TEST_F(OverriddenSettings, LeaveTheOthersAlone) {
  settings_.SaveSetting("Settings", "Webaddress", Variant("10.0.0.1"));
  registry_.Override("HTTPPort", "8080");
  EXPECT_EQ(settings_.GetSetting("Settings", "Webaddress", "").ToText(), "10.0.0.1");
  Array<std::string> keys;
  EXPECT_TRUE(settings_.GetAllKeys("Settings", keys));
  EXPECT_EQ(keys.UBound(), 1);
}

TEST_F(OverriddenSettings, WithNoneOverriddenAMissingSectionIsMissing) {
  EXPECT_EQ(settings_.GetSetting("Settings", "HTTPPort", "1").ToText(), "1");
  Array<std::string> keys;
  EXPECT_FALSE(settings_.GetAllKeys("Settings", keys));
}

}  // namespace
}  // namespace mirelo::wire
