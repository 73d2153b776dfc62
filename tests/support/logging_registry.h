#pragma once

#include <cstdint>
#include <cstring>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "host/registry.h"

namespace mirelo::testing {

// A registry that passes its calls on to another one and keeps a log of the values that were written, failed
// ones included.
class LoggingRegistry : public host::Registry {
 public:
  // A value as it was written: a text without its terminator, or a number in decimal.
  struct Write {
    std::string section;  // behind the application's own key
    std::string name;
    std::uint32_t type = 0;
    std::string value;
    friend bool operator==(const Write&, const Write&) = default;
  };

  explicit LoggingRegistry(host::Registry& inner) : inner_(inner) {}

  // Oldest first.
  std::vector<Write> writes;

  std::int32_t RegOpenKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                             Key& result) override {
    return Note(sub_key, inner_.RegOpenKeyExA(key, sub_key, access, result), result);
  }
  std::int32_t RegQueryValueExA(Key key, const std::string& name, std::uint32_t& type, char* data,
                                std::uint32_t& size) override {
    return inner_.RegQueryValueExA(key, name, type, data, size);
  }
  std::int32_t RegQueryInfoKeyA(Key key, std::uint32_t& value_count,
                                std::uint32_t& longest_value_name) override {
    return inner_.RegQueryInfoKeyA(key, value_count, longest_value_name);
  }
  std::int32_t RegEnumValueA(Key key, std::uint32_t index, char* name, std::uint32_t& size) override {
    return inner_.RegEnumValueA(key, index, name, size);
  }
  std::int32_t RegCreateKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                               Key& result) override {
    return Note(sub_key, inner_.RegCreateKeyExA(key, sub_key, access, result), result);
  }
  std::int32_t RegSetValueExA(Key key, const std::string& name, std::uint32_t type, const char* data,
                              std::uint32_t size) override {
    writes.push_back({sections_[key], name, type, ValueOf(type, data, size)});
    return inner_.RegSetValueExA(key, name, type, data, size);
  }
  std::int32_t RegDeleteKeyA(Key key, const std::string& sub_key) override {
    return inner_.RegDeleteKeyA(key, sub_key);
  }
  std::int32_t RegCloseKey(Key key) override { return inner_.RegCloseKey(key); }
  std::int32_t BeginTransaction() override { return inner_.BeginTransaction(); }
  std::int32_t CommitTransaction() override { return inner_.CommitTransaction(); }
  void RollBackTransaction() override { inner_.RollBackTransaction(); }
  std::string LastFailure() const override { return inner_.LastFailure(); }

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

  host::Registry& inner_;
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
