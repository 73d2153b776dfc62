#include "wire/overriding_registry.h"

#include <algorithm>

#include "automation/ansi.h"
#include "automation/text.h"

namespace mirelo::wire {

void OverridingRegistry::Override(const std::string& name, const std::string& text) {
  overrides_[UCase(name)] = TextToAnsi(text) + '\0';
}

bool OverridingRegistry::IsOverridden(const std::string& name) const {
  return overrides_.contains(UCase(name));
}

std::int32_t OverridingRegistry::RegOpenKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                                               Key& result) {
  const auto code = inner().RegOpenKeyExA(key, sub_key, access, result);
  if (code != kFileNotFound || access != kRead || IsEmpty()) return code;
  result = kAbsentKey;
  return kSuccess;
}

std::int32_t OverridingRegistry::RegQueryValueExA(Key key, const std::string& name, std::uint32_t& type,
                                                  char* data, std::uint32_t& size) {
  const auto override = overrides_.find(UCase(AnsiToText(name)));
  if (override == overrides_.end()) {
    return key == kAbsentKey ? kFileNotFound : inner().RegQueryValueExA(key, name, type, data, size);
  }
  const auto& bytes = override->second;
  const auto capacity = size;
  type = kSz;
  size = static_cast<std::uint32_t>(bytes.size());
  if (data == nullptr) return kSuccess;
  if (capacity < size) return kMoreData;
  std::ranges::copy(bytes, data);  // the zero at the end is among them
  return kSuccess;
}

std::int32_t OverridingRegistry::RegQueryInfoKeyA(Key key, std::uint32_t& value_count,
                                                  std::uint32_t& longest_value_name) {
  if (key != kAbsentKey) return inner().RegQueryInfoKeyA(key, value_count, longest_value_name);
  value_count = longest_value_name = 0;
  return kSuccess;
}

std::int32_t OverridingRegistry::RegEnumValueA(Key key, std::uint32_t index, char* name,
                                               std::uint32_t& size) {
  return key == kAbsentKey ? kNoMoreItems : inner().RegEnumValueA(key, index, name, size);
}

std::int32_t OverridingRegistry::RegCloseKey(Key key) {
  return key == kAbsentKey ? kSuccess : inner().RegCloseKey(key);
}

}  // namespace mirelo::wire
