#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace mirelo::testing {

// A variable of the environment for the time of a test; none when the value is null.
class EnvironmentVariable {
 public:
  EnvironmentVariable(const char* name, const char* value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    Set(value);
  }
  ~EnvironmentVariable() { Set(before_ ? before_->c_str() : nullptr); }
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;

 private:
  void Set(const char* value) {
#ifdef _WIN32
    ::_putenv_s(name_, value == nullptr ? "" : value);
#else
    if (value == nullptr) {
      ::unsetenv(name_);
    } else {
      ::setenv(name_, value, 1);
    }
#endif
  }

  const char* name_;
  std::optional<std::string> before_;
};

}  // namespace mirelo::testing
