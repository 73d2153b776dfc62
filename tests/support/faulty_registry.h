#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <string>

#include "automation/runtime_error.h"
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
  void Fail(const std::string& call, int countdown = 1, std::int32_t code = kRegistryIoFailed) {
    faults_[call] = {countdown - 1, 1, code, false};
  }
  void FailAlways(const std::string& call, std::int32_t code = kRegistryIoFailed) {
    faults_[call] = {0, std::numeric_limits<int>::max(), code, false};
  }
  // The `countdown`-th of these calls from now throws, as no registry should.
  void Raise(const std::string& call, int countdown = 1) {
    faults_[call] = {countdown - 1, 1, kSuccess, true};
  }

  // How many of these calls were made, failed ones included.
  int Calls(const std::string& call) const {
    const auto count = calls_.find(call);
    return count == calls_.end() ? 0 : count->second;
  }

  // The rights that the last call to open or create a key asked for.
  std::uint32_t LastAccess() const { return last_access_; }
  // The path that the last call to open, create or delete a key named.
  const std::string& LastPath() const { return last_path_; }

  // How many keys were opened and not closed again: a caller that leaks one shows here.
  int OpenKeys() const { return open_keys_; }

  std::int32_t RegOpenKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                             Key& result) override {
    last_access_ = access;
    last_path_ = sub_key;
    return Opened(Pass("RegOpenKeyExA", [&] { return inner_.RegOpenKeyExA(key, sub_key, access, result); }));
  }
  std::int32_t RegQueryValueExA(Key key, const std::string& name, std::uint32_t& type, char* data,
                                std::uint32_t& size) override {
    return Pass("RegQueryValueExA", [&] { return inner_.RegQueryValueExA(key, name, type, data, size); });
  }
  std::int32_t RegQueryInfoKeyA(Key key, std::uint32_t& value_count,
                                std::uint32_t& longest_value_name) override {
    return Pass("RegQueryInfoKeyA",
                [&] { return inner_.RegQueryInfoKeyA(key, value_count, longest_value_name); });
  }
  std::int32_t RegEnumValueA(Key key, std::uint32_t index, char* name, std::uint32_t& size) override {
    return Pass("RegEnumValueA", [&] { return inner_.RegEnumValueA(key, index, name, size); });
  }
  std::int32_t RegCreateKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                               Key& result) override {
    last_access_ = access;
    last_path_ = sub_key;
    return Opened(
        Pass("RegCreateKeyExA", [&] { return inner_.RegCreateKeyExA(key, sub_key, access, result); }));
  }
  std::int32_t RegSetValueExA(Key key, const std::string& name, std::uint32_t type, const char* data,
                              std::uint32_t size) override {
    return Pass("RegSetValueExA", [&] { return inner_.RegSetValueExA(key, name, type, data, size); });
  }
  std::int32_t RegDeleteKeyA(Key key, const std::string& sub_key) override {
    last_path_ = sub_key;
    return Pass("RegDeleteKeyA", [&] { return inner_.RegDeleteKeyA(key, sub_key); });
  }
  std::int32_t RegCloseKey(Key key) override {
    const std::int32_t code = Pass("RegCloseKey", [&] { return inner_.RegCloseKey(key); });
    const bool is_root = key >= kClassesRoot && key <= kUsers;
    if (code == kSuccess && !is_root) --open_keys_;
    return code;
  }
  std::int32_t BeginTransaction() override {
    return Pass("BeginTransaction", [&] { return inner_.BeginTransaction(); });
  }
  std::int32_t CommitTransaction() override {
    return Pass("CommitTransaction", [&] { return inner_.CommitTransaction(); });
  }
  void RollBackTransaction() override { inner_.RollBackTransaction(); }
  std::string LastFailure() const override { return inner_.LastFailure(); }

 private:
  struct Fault {
    int successes = 0;  // calls that still pass
    int failures = 0;   // calls behind them that fail
    std::int32_t code = kSuccess;
    bool raises = false;
  };

  std::int32_t Opened(std::int32_t code) {
    if (code == kSuccess) ++open_keys_;
    return code;
  }

  template <class Call>
  std::int32_t Pass(const std::string& name, Call&& call) {
    ++calls_[name];
    const auto fault = faults_.find(name);
    if (fault == faults_.end()) return call();
    if (fault->second.successes > 0) {
      --fault->second.successes;
      return call();
    }
    const Fault now = fault->second;
    if (--fault->second.failures == 0) faults_.erase(fault);
    if (now.raises) throw RuntimeError(57, "Device I/O error");
    return now.code;
  }

  host::Registry& inner_;
  std::map<std::string, Fault> faults_;
  std::map<std::string, int> calls_;
  std::uint32_t last_access_ = 0;
  std::string last_path_;
  int open_keys_ = 0;
};

}  // namespace mirelo::testing
