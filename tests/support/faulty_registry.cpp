#include "support/faulty_registry.h"

#include <limits>

#include "automation/runtime_error.h"

namespace mirelo::testing {

void FaultyRegistry::Fail(const std::string& call, int countdown, std::int32_t code) {
  faults_[call] = {countdown - 1, 1, code, false};
}

void FaultyRegistry::FailAlways(const std::string& call, std::int32_t code) {
  faults_[call] = {0, std::numeric_limits<int>::max(), code, false};
}

void FaultyRegistry::Raise(const std::string& call, int countdown) {
  faults_[call] = {countdown - 1, 1, kSuccess, true};
}

int FaultyRegistry::Calls(const std::string& call) const {
  const auto count = calls_.find(call);
  return count == calls_.end() ? 0 : count->second;
}

std::int32_t FaultyRegistry::RegOpenKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                                           Key& result) {
  last_access_ = access;
  last_path_ = sub_key;
  return Opened(Pass("RegOpenKeyExA", [&] { return inner_.RegOpenKeyExA(key, sub_key, access, result); }));
}

std::int32_t FaultyRegistry::RegQueryValueExA(Key key, const std::string& name, std::uint32_t& type,
                                              char* data, std::uint32_t& size) {
  return Pass("RegQueryValueExA", [&] { return inner_.RegQueryValueExA(key, name, type, data, size); });
}

std::int32_t FaultyRegistry::RegQueryInfoKeyA(Key key, std::uint32_t& value_count,
                                              std::uint32_t& longest_value_name) {
  return Pass("RegQueryInfoKeyA",
              [&] { return inner_.RegQueryInfoKeyA(key, value_count, longest_value_name); });
}

std::int32_t FaultyRegistry::RegEnumValueA(Key key, std::uint32_t index, char* name, std::uint32_t& size) {
  return Pass("RegEnumValueA", [&] { return inner_.RegEnumValueA(key, index, name, size); });
}

std::int32_t FaultyRegistry::RegCreateKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                                             Key& result) {
  last_access_ = access;
  last_path_ = sub_key;
  return Opened(
      Pass("RegCreateKeyExA", [&] { return inner_.RegCreateKeyExA(key, sub_key, access, result); }));
}

std::int32_t FaultyRegistry::RegSetValueExA(Key key, const std::string& name, std::uint32_t type,
                                            const char* data, std::uint32_t size) {
  return Pass("RegSetValueExA", [&] { return inner_.RegSetValueExA(key, name, type, data, size); });
}

std::int32_t FaultyRegistry::RegDeleteKeyA(Key key, const std::string& sub_key) {
  last_path_ = sub_key;
  return Pass("RegDeleteKeyA", [&] { return inner_.RegDeleteKeyA(key, sub_key); });
}

std::int32_t FaultyRegistry::RegCloseKey(Key key) {
  const std::int32_t code = Pass("RegCloseKey", [&] { return inner_.RegCloseKey(key); });
  const bool is_root = key >= kClassesRoot && key <= kUsers;
  if (code == kSuccess && !is_root) --open_keys_;
  return code;
}

std::int32_t FaultyRegistry::BeginTransaction() {
  return Pass("BeginTransaction", [&] { return inner_.BeginTransaction(); });
}

std::int32_t FaultyRegistry::CommitTransaction() {
  return Pass("CommitTransaction", [&] { return inner_.CommitTransaction(); });
}

void FaultyRegistry::RollBackTransaction() { inner_.RollBackTransaction(); }

std::string FaultyRegistry::LastFailure() const { return inner_.LastFailure(); }

std::int32_t FaultyRegistry::Opened(std::int32_t code) {
  if (code == kSuccess) ++open_keys_;
  return code;
}

template <class Call>
std::int32_t FaultyRegistry::Pass(const std::string& name, const Call& call) {
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

}  // namespace mirelo::testing
