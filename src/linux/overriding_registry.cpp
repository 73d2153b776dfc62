#include "linux/overriding_registry.h"

#include <cstring>

#include "automation/ansi.h"
#include "automation/text.h"

namespace mirelo {

void OverridingRegistry::Override(const std::string& name, const std::string& text) {
  overrides_[UCase(name)] = TextToAnsi(text) + '\0';
}

std::int32_t OverridingRegistry::RegOpenKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                                               Key& result) {
  const auto code = stored_.RegOpenKeyExA(key, sub_key, access, result);
  if (code != kFileNotFound || access != kRead || IsEmpty()) return code;
  result = kAbsentKey;
  return kSuccess;
}

std::int32_t OverridingRegistry::RegQueryValueExA(Key key, const std::string& name, std::uint32_t& type,
                                                  char* data, std::uint32_t& size) {
  const auto override = overrides_.find(UCase(AnsiToText(name)));
  if (override == overrides_.end()) {
    return key == kAbsentKey ? kFileNotFound : stored_.RegQueryValueExA(key, name, type, data, size);
  }
  const auto& bytes = override->second;
  const auto capacity = size;
  type = kSz;
  size = static_cast<std::uint32_t>(bytes.size());
  if (data == nullptr) return kSuccess;
  if (capacity < size) return kMoreData;
  std::memcpy(data, bytes.data(), bytes.size());
  return kSuccess;
}

std::int32_t OverridingRegistry::RegQueryInfoKeyA(Key key, std::uint32_t& value_count,
                                                  std::uint32_t& longest_value_name) {
  if (key != kAbsentKey) return stored_.RegQueryInfoKeyA(key, value_count, longest_value_name);
  value_count = longest_value_name = 0;
  return kSuccess;
}

std::int32_t OverridingRegistry::RegEnumValueA(Key key, std::uint32_t index, char* name,
                                               std::uint32_t& size) {
  return key == kAbsentKey ? kNoMoreItems : stored_.RegEnumValueA(key, index, name, size);
}

std::int32_t OverridingRegistry::RegCreateKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                                                 Key& result) {
  return stored_.RegCreateKeyExA(key, sub_key, access, result);
}

std::int32_t OverridingRegistry::RegSetValueExA(Key key, const std::string& name, std::uint32_t type,
                                                const char* data, std::uint32_t size) {
  return stored_.RegSetValueExA(key, name, type, data, size);
}

std::int32_t OverridingRegistry::RegDeleteKeyA(Key key, const std::string& sub_key) {
  return stored_.RegDeleteKeyA(key, sub_key);
}

std::int32_t OverridingRegistry::RegCloseKey(Key key) {
  return key == kAbsentKey ? kSuccess : stored_.RegCloseKey(key);
}

}  // namespace mirelo
