#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "host/registry.h"

struct HKEY__;  // Windows' own

namespace mirelo::windows {

// The registry of the machine. Texts stand there as Windows keeps them; here they are Windows-1252, whatever
// the machine's own code page. Windows hands out names of values in an order of its own. A path may have
// backslashes at its ends and doubled, as in every registry of ours.
//
// There are no transactions: writes are stored one by one.
class MachineRegistry : public host::Registry {
 public:
  static constexpr std::int32_t kNotSupported = 50;  // of winerror.h

  MachineRegistry() = default;
  ~MachineRegistry() override;
  MachineRegistry(const MachineRegistry&) = delete;
  MachineRegistry& operator=(const MachineRegistry&) = delete;

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
  std::int32_t BeginTransaction() override { return kNotSupported; }
  std::int32_t CommitTransaction() override { return kInvalidParameter; }
  void RollBackTransaction() override {}

 private:
  struct Open {
    HKEY__* handle;  // null for a key that is not open
    std::uint32_t access;
  };
  Open Find(Key key) const;
  Key Keep(HKEY__* opened, std::uint32_t access);

  // Numbers of our own: a closed one is never taken for another that Windows has given the same handle. The
  // rights are kept, since not every Windows asks for them in each call.
  std::map<Key, Open> open_;
  Key last_ = 0;
};

}  // namespace mirelo::windows
