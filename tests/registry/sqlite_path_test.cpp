#include "adapters/sqlite/registry_path.h"

#include <string>

#include <gtest/gtest.h>

#include "automation/runtime_error.h"
#include "support/environment_variable.h"
#include "support/error_number.h"

namespace mirelo::sqlite {
namespace {

using testing::EnvironmentVariable;

TEST(DefaultRegistryPath, LiesInTheUsersDataFolder) {
  struct Row {
    const char* data_home;
    const char* home;
    const char* path;
  };
  constexpr Row rows[] = {
      {"/data", "/home/me", "/data/mirelo/registry.db"},
      {"/data/", nullptr, "/data/mirelo/registry.db"},
      {nullptr, "/home/me", "/home/me/.local/share/mirelo/registry.db"},
      {"", "/home/me", "/home/me/.local/share/mirelo/registry.db"},
      {"relative", "/home/me", "/home/me/.local/share/mirelo/registry.db"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.path);
    const EnvironmentVariable data_home("XDG_DATA_HOME", row.data_home);
    const EnvironmentVariable home("HOME", row.home);
    EXPECT_EQ(DefaultRegistryPath(), row.path);
  }
}

TEST(DefaultRegistryPath, IsAnErrorWithoutAnyFolder) {
  const EnvironmentVariable data_home("XDG_DATA_HOME", nullptr);
  const EnvironmentVariable home("HOME", nullptr);
  const RuntimeError error = testing::ErrorOf([] { DefaultRegistryPath(); });
  EXPECT_EQ(error.Number(), 75);
  EXPECT_NE(error.Description().find("HOME"), std::string::npos);
  EXPECT_TRUE(error.Description().ends_with("Set one of them."));
}

}  // namespace
}  // namespace mirelo::sqlite
