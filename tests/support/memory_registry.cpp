#include "support/memory_registry.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "host/registry_names.h"

namespace mirelo::testing {

using host::FoldName;

struct MemoryRegistry::Node {
  struct Value {
    std::string name;
    std::uint32_t type;
    std::string data;
  };

  std::weak_ptr<Node> parent;
  std::string folded_name;
  std::map<std::string, std::shared_ptr<Node>> sub_keys;  // by folded name
  std::vector<Value> values;                              // in the order in which they were made
  bool deleted = false;

  Value* Find(std::string_view name) {
    const std::string folded = FoldName(name);
    const auto value = std::find_if(values.begin(), values.end(),
                                    [&](const Value& v) { return FoldName(v.name) == folded; });
    return value == values.end() ? nullptr : &*value;
  }

  std::shared_ptr<Node> SubKey(std::string_view name) const {
    const auto sub_key = sub_keys.find(FoldName(name));
    return sub_key == sub_keys.end() ? nullptr : sub_key->second;
  }
};

MemoryRegistry::MemoryRegistry() {
  for (const Key root : {kClassesRoot, kCurrentUser, kLocalMachine, kUsers})
    roots_[root] = std::make_shared<Node>();
}

MemoryRegistry::~MemoryRegistry() = default;

std::int32_t MemoryRegistry::RegOpenKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                                           Key& result) {
  Handle handle;
  if (const auto error = Resolve(key, 0, handle); error != kSuccess) return error;
  if (host::HasTooLongName(sub_key)) return kInvalidParameter;
  for (const std::string_view name : host::SplitPath(host::TerminatedName(sub_key))) {
    handle.node = handle.node->SubKey(name);
    if (!handle.node) return kFileNotFound;
  }
  result = NewHandle(handle.node, access);
  return kSuccess;
}

std::int32_t MemoryRegistry::RegQueryValueExA(Key key, const std::string& name, std::uint32_t& type,
                                              char* data, std::uint32_t& size) {
  Handle handle;
  if (const auto error = Resolve(key, kQueryValue, handle); error != kSuccess) return error;
  const Node::Value* value = handle.node->Find(host::TerminatedName(name));
  if (value == nullptr) return kFileNotFound;

  type = value->type;
  const std::uint32_t capacity = std::exchange(size, static_cast<std::uint32_t>(value->data.size()));
  if (data == nullptr) return kSuccess;
  if (capacity < size) return kMoreData;
  std::memcpy(data, value->data.data(), size);
  return kSuccess;
}

std::int32_t MemoryRegistry::RegQueryInfoKeyA(Key key, std::uint32_t& value_count,
                                              std::uint32_t& longest_value_name) {
  Handle handle;
  if (const auto error = Resolve(key, kQueryValue, handle); error != kSuccess) return error;
  std::size_t longest = 0;
  for (const auto& value : handle.node->values) longest = std::max(longest, value.name.size());
  value_count = static_cast<std::uint32_t>(handle.node->values.size());
  longest_value_name = static_cast<std::uint32_t>(longest);
  return kSuccess;
}

std::int32_t MemoryRegistry::RegEnumValueA(Key key, std::uint32_t index, char* name, std::uint32_t& size) {
  Handle handle;
  if (const auto error = Resolve(key, kQueryValue, handle); error != kSuccess) return error;
  if (index >= handle.node->values.size()) return kNoMoreItems;
  const std::string& found = handle.node->values[index].name;
  if (size <= found.size()) return kMoreData;
  std::memcpy(name, found.c_str(), found.size() + 1);
  size = static_cast<std::uint32_t>(found.size());
  return kSuccess;
}

std::int32_t MemoryRegistry::RegCreateKeyExA(Key key, const std::string& sub_key, std::uint32_t access,
                                             Key& result) {
  Handle handle;
  if (const auto error = Resolve(key, 0, handle); error != kSuccess) return error;
  if (host::HasTooLongName(sub_key)) return kInvalidParameter;
  for (const std::string_view name : host::SplitPath(host::TerminatedName(sub_key))) {
    auto next = handle.node->SubKey(name);
    if (!next) {
      if ((handle.access & kCreateSubKey) == 0) return kAccessDenied;
      next = std::make_shared<Node>();
      next->parent = handle.node;
      next->folded_name = FoldName(name);
      Note([parent = handle.node, next] {
        parent->sub_keys.erase(next->folded_name);
        next->deleted = true;
      });
      handle.node->sub_keys[next->folded_name] = next;
    }
    handle.node = next;
  }
  result = NewHandle(handle.node, access);
  return kSuccess;
}

std::int32_t MemoryRegistry::RegSetValueExA(Key key, const std::string& name, std::uint32_t type,
                                            const char* data, std::uint32_t size) {
  Handle handle;
  if (const auto error = Resolve(key, kSetValue, handle); error != kSuccess) return error;
  const std::string_view given = host::TerminatedName(name);
  if (given.size() > host::kLongestValueName) return kInvalidParameter;
  if (data == nullptr && size > 0) return kInvalidParameter;

  const std::string bytes = size == 0 ? std::string() : std::string(data, size);
  Note([node = handle.node, before = handle.node->values] { node->values = before; });
  if (Node::Value* value = handle.node->Find(given)) {
    value->type = type;
    value->data = bytes;
  } else {
    handle.node->values.push_back({std::string(given), type, bytes});
  }
  return kSuccess;
}

std::int32_t MemoryRegistry::RegDeleteKeyA(Key key, const std::string& sub_key) {
  Key opened = 0;
  if (const auto error = RegOpenKeyExA(key, sub_key, 0, opened); error != kSuccess) return error;
  const std::shared_ptr<Node> node = handles_[opened].node;
  handles_.erase(opened);
  const std::shared_ptr<Node> parent = node->parent.lock();
  if (!parent || !node->sub_keys.empty()) return kAccessDenied;
  Note([parent, node] {
    parent->sub_keys[node->folded_name] = node;
    node->deleted = false;
  });
  parent->sub_keys.erase(node->folded_name);
  node->deleted = true;
  return kSuccess;
}

std::int32_t MemoryRegistry::RegCloseKey(Key key) {
  if (roots_.count(key) != 0) return kSuccess;
  return handles_.erase(key) == 1 ? kSuccess : kInvalidHandle;
}

std::int32_t MemoryRegistry::BeginTransaction() {
  if (undo_) return kInvalidParameter;
  undo_.emplace();
  return kSuccess;
}

std::int32_t MemoryRegistry::CommitTransaction() {
  if (!undo_) return kInvalidParameter;
  undo_.reset();
  return kSuccess;
}

void MemoryRegistry::RollBackTransaction() {
  if (!undo_) return;
  std::for_each(undo_->rbegin(), undo_->rend(), [](const auto& undo) { undo(); });
  undo_.reset();
}

void MemoryRegistry::Note(std::function<void()> undo) {
  if (undo_) undo_->push_back(std::move(undo));
}

std::int32_t MemoryRegistry::Resolve(Key key, std::uint32_t needed, Handle& handle) const {
  if (const auto root = roots_.find(key); root != roots_.end()) {
    handle = {root->second, ~0U};
    return kSuccess;
  }
  const auto open = handles_.find(key);
  if (open == handles_.end()) return kInvalidHandle;
  if ((open->second.access & needed) != needed) return kAccessDenied;
  if (open->second.node->deleted) return kKeyDeleted;
  handle = open->second;
  return kSuccess;
}

host::Registry::Key MemoryRegistry::NewHandle(std::shared_ptr<Node> node, std::uint32_t access) {
  handles_[++last_handle_] = {std::move(node), access};
  return last_handle_;
}

}  // namespace mirelo::testing
