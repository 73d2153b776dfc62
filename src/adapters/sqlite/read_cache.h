#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace mirelo::sqlite {

// What was read from a registry file since it last changed. Entries are found by the names exactly as the
// calls spelled them. It remembers what is there, never that something is absent.
class ReadCache {
 public:
  struct Value {
    std::uint32_t type;
    std::string data;
  };

  void Clear();

  // The id of the key at a path below another key. Null, here and below, for what is not in the cache.
  const std::int64_t* FindKey(std::int64_t below, const std::string& path) const;
  void KeepKey(std::int64_t below, const std::string& path, std::int64_t key);

  const Value* FindValue(std::int64_t key, const std::string& name) const;
  const Value* KeepValue(std::int64_t key, const std::string& name, Value value);

  // The names of all values of a key, one key at a time.
  const std::vector<std::string>* FindNames(std::int64_t key) const;
  const std::vector<std::string>* KeepNames(std::int64_t key, std::vector<std::string> names);

 private:
  // More entries than any registry of ours has. It bounds the memory, since names may be asked for in ever
  // new spellings.
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
