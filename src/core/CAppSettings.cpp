#include "core/CAppSettings.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "automation/ansi.h"
#include "automation/runtime_error.h"
#include "host/clock.h"
#include "host/host.h"

namespace mirelo {

using host::Registry;

namespace {

Registry& TheRegistry() { return host::Host::Current().registry(); }

// A key of the registry that is open for as long as its user has this.
class OpenKey {
 public:
  OpenKey(Registry& registry, Registry::Key key) : registry_(registry), key_(key) {}
  ~OpenKey() { registry_.RegCloseKey(key_); }
  OpenKey(const OpenKey&) = delete;
  OpenKey& operator=(const OpenKey&) = delete;

  // The value's kind, and its size in bytes.
  bool QuerySize(const std::string& name, std::uint32_t& type, std::uint32_t& size) const {
    return registry_.RegQueryValueExA(key_, name, type, nullptr, size) == Registry::kSuccess;
  }
  // The value's bytes, where `size` is the buffer's size before and theirs afterwards.
  bool QueryData(const std::string& name, char* data, std::uint32_t& size) const {
    std::uint32_t type = 0;
    return registry_.RegQueryValueExA(key_, name, type, data, size) == Registry::kSuccess;
  }
  bool QueryLongestName(std::uint32_t& length) const {
    std::uint32_t count = 0;
    return registry_.RegQueryInfoKeyA(key_, count, length) == Registry::kSuccess;
  }
  bool EnumerateName(std::uint32_t index, char* name, std::uint32_t& size) const {
    return registry_.RegEnumValueA(key_, index, name, size) == Registry::kSuccess;
  }
  bool Set(const std::string& name, std::uint32_t type, std::string_view bytes) const {
    return registry_.RegSetValueExA(key_, name, type, bytes.data(),
                                    static_cast<std::uint32_t>(bytes.size())) == Registry::kSuccess;
  }

 private:
  Registry& registry_;
  Registry::Key key_;
};

using IntegerBytes = std::array<char, sizeof(std::int32_t)>;

std::int32_t IntegerOf(const IntegerBytes& bytes) {
  std::uint32_t value = 0;
  for (std::size_t i = bytes.size(); i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[i]);
  return static_cast<std::int32_t>(value);
}

IntegerBytes BytesOf(std::int32_t integer) {
  IntegerBytes bytes{};
  auto value = static_cast<std::uint32_t>(integer);
  for (char& byte : bytes) {
    byte = static_cast<char>(value & 0xFF);
    value >>= 8;
  }
  return bytes;
}

Variant ReadText(const OpenKey& key, const std::string& name, std::uint32_t size,
                 const Variant& default_value) {
  std::string buffer(size, '\0');
  if (!key.QueryData(name, buffer.data(), size)) return default_value;
  // The last byte stored is taken for the terminator; a value of no bytes has none to take away.
  if (size == 0) throw Errors::InvalidProcedureCall();
  return AnsiToText(std::string_view(buffer).substr(0, size - 1));
}

Variant ReadInteger(const OpenKey& key, const std::string& name, const Variant& default_value) {
  IntegerBytes bytes{};
  auto size = static_cast<std::uint32_t>(bytes.size());
  if (!key.QueryData(name, bytes.data(), size)) return default_value;
  return IntegerOf(bytes);
}

bool WriteText(const OpenKey& key, const std::string& name, std::string_view text) {
  std::string bytes = TextToAnsi(text);
  bytes.push_back('\0');
  return key.Set(name, Registry::kSz, bytes);
}

bool WriteInteger(const OpenKey& key, const std::string& name, std::int32_t integer) {
  const IntegerBytes bytes = BytesOf(integer);
  return key.Set(name, Registry::kDword, std::string_view(bytes.data(), bytes.size()));
}

bool Write(const OpenKey& key, const std::string& name, Variant& value) {
  switch (value.type()) {
    case Variant::Type::String:
      return WriteText(key, name, *value.IfText());
    case Variant::Type::Date:
      return WriteText(key, name, value.ToText(host::Host::Current().clock().Regional()));
    case Variant::Type::Boolean:
      return WriteText(key, name, value.ToText());
    default: {
      const std::int32_t integer = value.ToInt32();
      value = integer;
      return WriteInteger(key, name, integer);
    }
  }
}

}  // namespace

void CAppSettings::Init(std::string_view company_name, std::string_view app_name) {
  CompanyName(company_name);
  AppName(app_name);
}

void CAppSettings::AppName(std::string_view value) {
  if (value.empty()) throw Errors::InvalidAppName();
  AnyFailureAs(Errors::AppSettingsFailure, [&] { app_name_ = value; });
}

void CAppSettings::CompanyName(std::string_view value) {
  if (value.empty()) throw Errors::InvalidCompanyName();
  AnyFailureAs(Errors::AppSettingsFailure, [&] { company_name_ = value; });
}

void CAppSettings::MainBranch(std::string_view value) {
  if (value.empty()) throw Errors::InvalidMainBranch();
  AnyFailureAs(Errors::AppSettingsFailure, [&] { main_branch_ = value; });
}

void CAppSettings::RootKey(Handle value) {
  if (value != Registry::kCurrentUser && value != Registry::kLocalMachine) throw Errors::InvalidRootKey();
  root_key_ = value;
}

void CAppSettings::DeleteSetting(std::string_view section, std::string_view key) {
  const bool deleted = AnyFailureAs(Errors::AppSettingsFailure, [&] {
    std::string path = Path(section);
    if (!key.empty()) path.append("\\").append(TextToAnsi(key));
    return TheRegistry().RegDeleteKeyA(root_key_, path) == Registry::kSuccess;
  });
  if (!deleted) throw Errors::FailedDeletingSetting();
}

bool CAppSettings::GetAllKeys(std::string_view section, Array<std::string>& keys) {
  try {
    keys.Erase();
    Registry& registry = TheRegistry();
    Handle handle = 0;
    if (registry.RegOpenKeyExA(root_key_, Path(section), Registry::kQueryValue, handle) !=
        Registry::kSuccess) {
      return false;
    }
    const OpenKey open(registry, handle);
    std::uint32_t longest = 0;
    open.QueryLongestName(longest);

    std::string name(longest + 1, '\0');
    for (std::int32_t count = 0;; ++count) {
      auto size = static_cast<std::uint32_t>(name.size());
      if (!open.EnumerateName(static_cast<std::uint32_t>(count), name.data(), size)) return true;
      keys.ReDimPreserve(count + 1, 1);
      keys(count + 1) = AnsiToText(std::string_view(name).substr(0, size));
    }
  } catch (...) {
    return false;
  }
}

Variant CAppSettings::GetSetting(std::string_view section, std::string_view key,
                                 const Variant& default_value) {
  return AnyFailureAs(Errors::AppSettingsFailure, [&]() -> Variant {
    Registry& registry = TheRegistry();
    Handle handle = 0;
    if (registry.RegOpenKeyExA(root_key_, Path(section), Registry::kRead, handle) != Registry::kSuccess) {
      return default_value;
    }
    const OpenKey open(registry, handle);
    const std::string name = TextToAnsi(key);
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    if (!open.QuerySize(name, type, size)) return default_value;
    if (type == Registry::kSz) return ReadText(open, name, size, default_value);
    if (type == Registry::kDword) return ReadInteger(open, name, default_value);
    return default_value;
  });
}

void CAppSettings::SaveSetting(std::string_view section, std::string_view key, Variant& value) {
  const bool saved = AnyFailureAs(Errors::AppSettingsFailure, [&] {
    Registry& registry = TheRegistry();
    Handle handle = 0;
    if (registry.RegCreateKeyExA(root_key_, Path(section), Registry::kAllAccess, handle) !=
        Registry::kSuccess) {
      return false;
    }
    return Write(OpenKey(registry, handle), TextToAnsi(key), value);
  });
  if (!saved) throw Errors::FailedSavingSetting();
}

std::string CAppSettings::Path(std::string_view section) const {
  std::string path = main_branch_;
  path.append("\\").append(company_name_).append("\\").append(app_name_).append("\\").append(section);
  return TextToAnsi(path);
}

}  // namespace mirelo
