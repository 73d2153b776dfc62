#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "host/registry_wrapper.h"

namespace mirelo::wire {

// A registry with some values in front of it that hold for this run only: they are read in place of the
// stored ones and never written. A value is overridden by its name, in whatever key it is asked for.
class OverridingRegistry : public host::RegistryWrapper {
 public:
  using host::RegistryWrapper::RegistryWrapper;  // around what is stored

  // `name` in any case; `text` is read as a stored text.
  void Override(const std::string& name, const std::string& text);
  bool IsOverridden(const std::string& name) const;
  bool IsEmpty() const { return overrides_.empty(); }

  std::int32_t RegOpenKeyExA(Key key, const std::string& sub_key, std::uint32_t access, Key& result) override;
  std::int32_t RegQueryValueExA(Key key, const std::string& name, std::uint32_t& type, char* data,
                                std::uint32_t& size) override;
  std::int32_t RegQueryInfoKeyA(Key key, std::uint32_t& value_count,
                                std::uint32_t& longest_value_name) override;
  std::int32_t RegEnumValueA(Key key, std::uint32_t index, char* name, std::uint32_t& size) override;
  std::int32_t RegCloseKey(Key key) override;

 private:
  // The handle of a key that the stored registry does not have. It can be opened all the same, since a value
  // in it may be overridden.
  static constexpr Key kAbsentKey = 0x7FFFFFFF;

  std::map<std::string, std::string> overrides_;  // names in capitals, texts with their terminating NUL
};

}  // namespace mirelo::wire
