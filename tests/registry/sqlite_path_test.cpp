#include "adapters/sqlite/registry_path.h"

#include <cstdlib>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "automation/runtime_error.h"

namespace mirelo::sqlite {
namespace {

// A variable of the environment for the time of a test; none when the value is null.
class Variable {
 public:
  Variable(const char* name, const char* value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    Put(value);
  }
  ~Variable() { Put(before_ ? before_->c_str() : nullptr); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  void Put(const char* value) {
    if (value == nullptr) {
      ::unsetenv(name_);
    } else {
      ::setenv(name_, value, 1);
    }
  }

  const char* name_;
  std::optional<std::string> before_;
};

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
    const Variable data_home("XDG_DATA_HOME", row.data_home);
    const Variable home("HOME", row.home);
    EXPECT_EQ(DefaultRegistryPath(), row.path);
  }
}

TEST(DefaultRegistryPath, IsAnErrorWithoutAnyFolder) {
  const Variable data_home("XDG_DATA_HOME", nullptr);
  const Variable home("HOME", nullptr);
  try {
    DefaultRegistryPath();
    FAIL() << "no error";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), 75);
    EXPECT_NE(error.Description().find("HOME"), std::string::npos);
  }
}

}  // namespace
}  // namespace mirelo::sqlite
