#pragma once

#include <cstdint>
#include <cstring>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "host/registry_wrapper.h"

namespace mirelo::testing {

// A registry that passes its calls on to another one and keeps a log of the values that were written, failed
// ones included.
class LoggingRegistry : public host::RegistryWrapper {
 public:
  // A value as it was written: a text without its terminator, or a number in decimal.
  struct Write {
    std::string section;  // behind the application's own key
    std::string name;
    std::uint32_t type = 0;
    std::string value;
    friend bool operator==(const Write&, const Write&) = default;
  };

  using host::RegistryWrapper::RegistryWrapper;

  // Oldest first.
  std::vector<Write> writes;

  std::int32_t RegOpenKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                             Key& result) override {
    return Note(sub_key, inner().RegOpenKeyExA(key, sub_key, access, result), result);
  }
  std::int32_t RegCreateKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                               Key& result) override {
    return Note(sub_key, inner().RegCreateKeyExA(key, sub_key, access, result), result);
  }
  std::int32_t RegSetValueExA(Key key, const std::string& name, std::uint32_t type, const char* data,
                              std::uint32_t size) override {
    writes.push_back({sections_[key], name, type, ValueOf(type, data, size)});
    return inner().RegSetValueExA(key, name, type, data, size);
  }

 private:
  std::int32_t Note(const std::string& path, std::int32_t code, const Key& opened) {
    static const std::string application = "Software\\Kestrin\\Dovanta2\\";
    if (code == kSuccess)
      sections_[opened] = path.substr(path.starts_with(application) ? application.size() : 0);
    return code;
  }
  static std::string ValueOf(std::uint32_t type, const char* data, std::uint32_t size) {
    if (type == kSz) return {data, size - 1};
    std::int32_t number = 0;
    std::memcpy(&number, data, sizeof number);
    return std::to_string(number);
  }

  std::map<Key, std::string> sections_;  // of the keys that were opened
};

// Prints a write readably in a failing test.
inline void PrintTo(const LoggingRegistry::Write& write, std::ostream* out) {
  *out << write.section << '\\' << write.name << " = ";
  if (write.type == host::Registry::kSz) {
    *out << '"' << write.value << '"';
  } else {
    *out << write.value;
  }
}

}  // namespace mirelo::testing
