#include "adapters/windows/system.h"

#include "adapters/windows/machine_registry.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

#include "adapters/windows/code_page.h"
#include "host/registry_names.h"

namespace mirelo::windows {

namespace {

constexpr DWORD kExpandSz = 2;
constexpr DWORD kMultiSz = 7;

bool IsText(DWORD type) { return type == host::Registry::kSz || type == kExpandSz || type == kMultiSz; }

bool IsRoot(host::Registry::Key key) {
  return key >= host::Registry::kClassesRoot && key <= host::Registry::kUsers;
}

// The path as Windows takes it.
std::wstring PathOf(const std::string& path) {
  std::string joined;
  for (const std::string_view name : host::SplitPath(host::TerminatedName(path))) {
    joined.append(joined.empty() ? "" : "\\").append(name);
  }
  return WideOf(joined);
}

// What is wrong with a key before what is wrong with the rest of a call.
LSTATUS UnlessDeleted(HKEY key, LSTATUS error) {
  const LSTATUS state = ::RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                           nullptr, nullptr, nullptr, nullptr);
  return state == ERROR_KEY_DELETED ? state : error;
}

// The bytes of a value as Windows has them.
LSTATUS Read(HKEY key, const std::wstring& name, DWORD& type, std::vector<BYTE>& data) {
  DWORD size = 0;
  LSTATUS result = ::RegQueryValueExW(key, name.c_str(), nullptr, &type, nullptr, &size);
  do {  // it may have grown meanwhile
    data.resize(size);
    if (result != ERROR_SUCCESS && result != ERROR_MORE_DATA) return result;
    result = ::RegQueryValueExW(key, name.c_str(), nullptr, &type, data.data(), &size);
  } while (result == ERROR_MORE_DATA);
  data.resize(std::min<std::size_t>(size, data.size()));
  return result;
}

std::string BytesOf(DWORD type, const std::vector<BYTE>& data) {
  if (!IsText(type)) return std::string(data.begin(), data.end());
  std::wstring text(data.size() / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), data.data(), text.size() * sizeof(wchar_t));
  return AnsiOf(text);
}

}  // namespace

MachineRegistry::~MachineRegistry() {
  for (const auto& [key, open] : open_) ::RegCloseKey(open.handle);
}

std::int32_t MachineRegistry::RegOpenKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                                            Key& result) {
  const HKEY from = Find(key).handle;
  if (from == nullptr) return kInvalidHandle;
  if (host::HasTooLongName(sub_key)) return UnlessDeleted(from, kInvalidParameter);
  HKEY opened = nullptr;
  const LSTATUS error = ::RegOpenKeyExW(from, PathOf(sub_key).c_str(), 0, access, &opened);
  if (error == ERROR_SUCCESS) result = Keep(opened, access);
  return error;
}

std::int32_t MachineRegistry::RegQueryValueExA(Key key, const std::string& name, std::uint32_t& type,
                                               char* data, std::uint32_t& size) {
  const auto [from, access_to_from] = Find(key);
  if (from == nullptr) return kInvalidHandle;
  if ((access_to_from & kQueryValue) == 0) return kAccessDenied;
  const std::string_view given = host::TerminatedName(name);
  if (given.size() > host::kLongestValueName) return UnlessDeleted(from, kFileNotFound);
  DWORD kind = 0;
  std::vector<BYTE> stored;
  const LSTATUS error = Read(from, WideOf(given), kind, stored);
  if (error != ERROR_SUCCESS) return error;

  const std::string bytes = BytesOf(kind, stored);
  type = kind;
  const std::uint32_t capacity = size;
  size = static_cast<std::uint32_t>(bytes.size());
  if (data == nullptr) return kSuccess;
  if (capacity < size) return kMoreData;
  std::copy(bytes.begin(), bytes.end(), data);
  return kSuccess;
}

std::int32_t MachineRegistry::RegQueryInfoKeyA(Key key, std::uint32_t& value_count,
                                               std::uint32_t& longest_value_name) {
  const auto [from, access_to_from] = Find(key);
  if (from == nullptr) return kInvalidHandle;
  if ((access_to_from & kQueryValue) == 0) return kAccessDenied;
  DWORD count = 0;
  DWORD longest = 0;
  const LSTATUS error = ::RegQueryInfoKeyW(from, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &count,
                                           &longest, nullptr, nullptr, nullptr);
  if (error != ERROR_SUCCESS) return error;
  value_count = count;
  longest_value_name = longest;
  return kSuccess;
}

std::int32_t MachineRegistry::RegEnumValueA(Key key, std::uint32_t index, char* name, std::uint32_t& size) {
  const auto [from, access_to_from] = Find(key);
  if (from == nullptr) return kInvalidHandle;
  if ((access_to_from & kQueryValue) == 0) return kAccessDenied;
  std::wstring found(host::kLongestValueName + 1, L'\0');
  DWORD length = static_cast<DWORD>(found.size());
  const LSTATUS error =
      ::RegEnumValueW(from, index, found.data(), &length, nullptr, nullptr, nullptr, nullptr);
  if (error != ERROR_SUCCESS) return error;
  const std::string ansi = AnsiOf(found.substr(0, length));
  if (size <= ansi.size()) return kMoreData;
  std::memcpy(name, ansi.c_str(), ansi.size() + 1);
  size = static_cast<std::uint32_t>(ansi.size());
  return kSuccess;
}

std::int32_t MachineRegistry::RegCreateKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                                              Key& result) {
  const auto [from, access_to_from] = Find(key);
  if (from == nullptr) return kInvalidHandle;
  if (host::HasTooLongName(sub_key)) return UnlessDeleted(from, kInvalidParameter);
  const std::wstring path = PathOf(sub_key);
  HKEY opened = nullptr;
  LSTATUS error = ::RegOpenKeyExW(from, path.c_str(), 0, access, &opened);
  if (error == ERROR_FILE_NOT_FOUND && (access_to_from & kCreateSubKey) == 0) return kAccessDenied;
  if (error == ERROR_FILE_NOT_FOUND) {
    error = ::RegCreateKeyExW(from, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr,
                              &opened, nullptr);
  }
  if (error == ERROR_SUCCESS) result = Keep(opened, access);
  return error;
}

std::int32_t MachineRegistry::RegSetValueExA(Key key, const std::string& name, std::uint32_t type,
                                             const char* data, std::uint32_t size) {
  const auto [to, access] = Find(key);
  if (to == nullptr) return kInvalidHandle;
  if ((access & kSetValue) == 0) return kAccessDenied;
  const std::string_view given = host::TerminatedName(name);
  if (given.size() > host::kLongestValueName || (data == nullptr && size > 0)) {
    return UnlessDeleted(to, kInvalidParameter);
  }
  const std::string_view bytes(data, size);
  // Windows takes a terminator along that stands behind the text.
  const std::wstring text = IsText(type) ? WideOf(bytes) + L'!' : std::wstring();
  const void* const stored = IsText(type) ? static_cast<const void*>(text.data()) : data;
  const std::size_t length = IsText(type) ? bytes.size() * sizeof(wchar_t) : size;
  const LSTATUS error = ::RegSetValueExW(to, WideOf(given).c_str(), 0, type, static_cast<const BYTE*>(stored),
                                         static_cast<DWORD>(length));
  return error == ERROR_SUCCESS ? ::RegFlushKey(to) : error;
}

std::int32_t MachineRegistry::RegDeleteKeyA(Key key, const std::string& sub_key) {
  const HKEY from = Find(key).handle;
  if (from == nullptr) return kInvalidHandle;
  if (host::HasTooLongName(sub_key)) return UnlessDeleted(from, kInvalidParameter);
  const std::wstring path = PathOf(sub_key);
  if (IsRoot(key) && path.empty()) return kAccessDenied;
  return ::RegDeleteKeyW(from, path.c_str());
}

std::int32_t MachineRegistry::RegCloseKey(Key key) {
  if (IsRoot(key)) return kSuccess;
  const auto open = open_.find(key);
  if (open == open_.end()) return kInvalidHandle;
  ::RegCloseKey(open->second.handle);
  open_.erase(open);
  return kSuccess;
}

MachineRegistry::Open MachineRegistry::Find(Key key) const {
  // The system's numbers of roots are those of ours, with their sign.
  const LONG_PTR root = static_cast<LONG>(key);
  if (IsRoot(key)) return {reinterpret_cast<HKEY>(root), kAllAccess};
  const auto open = open_.find(key);
  return open == open_.end() ? Open{nullptr, 0} : open->second;
}

host::Registry::Key MachineRegistry::Keep(HKEY opened, std::uint32_t access) {
  open_.emplace(++last_, Open{opened, access});
  return last_;
}

}  // namespace mirelo::windows
