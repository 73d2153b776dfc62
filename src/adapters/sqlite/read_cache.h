#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace mirelo::sqlite {

// What was read of a registry file since it last changed, by the texts of the calls that asked. It holds what
// is there and never what is absent.
class ReadCache {
 public:
  struct Value {
    std::uint32_t type;
    std::string data;
  };

  void Clear();

  // The key at a path below another one. Null for what is not held, here and below.
  const std::int64_t* FindKey(std::int64_t below, const std::string& path) const;
  void KeepKey(std::int64_t below, const std::string& path, std::int64_t key);

  const Value* FindValue(std::int64_t key, const std::string& name) const;
  const Value* KeepValue(std::int64_t key, const std::string& name, Value value);

  // The names of all values of a key, one key at a time.
  const std::vector<std::string>* FindNames(std::int64_t key) const;
  const std::vector<std::string>* KeepNames(std::int64_t key, std::vector<std::string> names);

 private:
  // More than any registry of ours has; names in ever new spellings must not fill the memory.
  static constexpr std::size_t kMostEntries = 4096;

  void MakeRoom();

  // By key, then by path or name as it was written.
  std::unordered_map<std::int64_t, std::unordered_map<std::string, std::int64_t>> keys_;
  std::unordered_map<std::int64_t, std::unordered_map<std::string, Value>> values_;
  std::size_t entries_ = 0;
  std::int64_t names_key_ = 0;  // 0 for none
  std::vector<std::string> names_;
};

}  // namespace mirelo::sqlite
