#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/registry.h"

namespace mirelo::testing {

// A registry that lives and dies with this object.
class MemoryRegistry : public host::Registry {
 public:
  MemoryRegistry();
  ~MemoryRegistry() override;

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
  std::int32_t BeginTransaction() override;
  std::int32_t CommitTransaction() override;
  void RollBackTransaction() override;

  // How many keys are open: a caller that leaks one shows here.
  std::size_t OpenKeys() const { return handles_.size(); }

 private:
  struct Node;
  struct Handle {
    std::shared_ptr<Node> node;
    std::uint32_t access = 0;
  };

  // The node behind a handle, when the handle carries the rights `needed`.
  std::int32_t Resolve(Key key, std::uint32_t needed, Handle& handle) const;
  Key NewHandle(std::shared_ptr<Node> node, std::uint32_t access);

  // To be called before a change, with what takes it back.
  void Note(std::function<void()> undo);

  std::map<Key, std::shared_ptr<Node>> roots_;
  std::map<Key, Handle> handles_;
  Key last_handle_ = 0;
  std::optional<std::vector<std::function<void()>>> undo_;  // of the transaction under way, oldest first
};

}  // namespace mirelo::testing
