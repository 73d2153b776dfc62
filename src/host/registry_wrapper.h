#pragma once

#include <cstdint>
#include <string>

#include "host/registry.h"

namespace mirelo::host {

// Passes all calls on to another registry. Whoever changes some of them derives from it, and overrides these
// alone.
class RegistryWrapper : public Registry {
 public:
  // `inner` must outlive this.
  explicit RegistryWrapper(Registry& inner) : inner_(inner) {}

  std::int32_t RegOpenKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                             Key& result) override {
    return inner_.RegOpenKeyExA(key, sub_key, access, result);
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
    return inner_.RegCreateKeyExA(key, sub_key, access, result);
  }
  std::int32_t RegSetValueExA(Key key, const std::string& name, std::uint32_t type, const char* data,
                              std::uint32_t size) override {
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

 protected:
  Registry& inner() { return inner_; }

 private:
  Registry& inner_;
};

}  // namespace mirelo::host
