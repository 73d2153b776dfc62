#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "host/registry.h"

namespace mirelo::testing {

// A registry that passes its calls on to another one and fails those that a test has chosen, by the call's
// name and by how many calls of it are still to succeed. A call that fails does nothing.
//
//   faulty.Fail("RegSetValueExA", 3);   // the third from now on fails, once
class FaultyRegistry : public host::Registry {
 public:
  explicit FaultyRegistry(host::Registry& inner) : inner_(inner) {}

  // The `countdown`-th of these calls from now returns `code`.
  void Fail(const std::string& call, int countdown = 1, std::int32_t code = kRegistryIoFailed);
  void FailAlways(const std::string& call, std::int32_t code = kRegistryIoFailed);
  // The `countdown`-th of these calls from now throws, as no registry should: error 57.
  void Raise(const std::string& call, int countdown = 1);

  // How many of these calls were made, failed ones included.
  int Calls(const std::string& call) const;

  // The rights that the last call to open or create a key asked for.
  std::uint32_t LastAccess() const { return last_access_; }
  // The path that the last call to open, create or delete a key named.
  const std::string& LastPath() const { return last_path_; }

  // How many keys were opened and not closed again: a caller that leaks one shows here.
  int OpenKeys() const { return open_keys_; }

  std::int32_t RegOpenKeyExA(Key key, const std::string& sub_key, std::uint32_t access, Key& result) override;
  std::int32_t RegQueryValueExA(Key key, const std::string& name, std::uint32_t& type, char* data,
                                std::uint32_t& size) override;
  std::int32_t RegQueryInfoKeyA(Key key, std::uint32_t& value_count,
                                std::uint32_t& longest_value_name) override;
  std::int32_t RegEnumValueA(Key key, std::uint32_t index, char* name, std::uint32_t& size) override;
  std::int32_t RegCreateKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                               Key& result) override;
  std::int32_t RegSetValueExA(Key key, const std::string& name, std::uint32_t type, const char* data,
                              std::uint32_t size) override;
  std::int32_t RegDeleteKeyA(Key key, const std::string& sub_key) override;
  std::int32_t RegCloseKey(Key key) override;
  std::int32_t BeginTransaction() override;
  std::int32_t CommitTransaction() override;
  void RollBackTransaction() override;
  std::string LastFailure() const override;

 private:
  struct Fault {
    int successes = 0;  // calls that still pass
    int failures = 0;   // calls behind them that fail
    std::int32_t code = kSuccess;
    bool raises = false;
  };

  std::int32_t Opened(std::int32_t code);
  template <class Call>
  std::int32_t Pass(const std::string& name, const Call& call);

  host::Registry& inner_;
  std::map<std::string, Fault> faults_;
  std::map<std::string, int> calls_;
  std::uint32_t last_access_ = 0;
  std::string last_path_;
  int open_keys_ = 0;
};

}  // namespace mirelo::testing
