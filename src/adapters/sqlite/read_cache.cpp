#include "adapters/sqlite/read_cache.h"

#include <utility>

namespace mirelo::sqlite {

namespace {

template <class Entry>
const Entry* Find(const std::unordered_map<std::int64_t, std::unordered_map<std::string, Entry>>& maps,
                  std::int64_t key, const std::string& text) {
  const auto map = maps.find(key);
  if (map == maps.end()) return nullptr;
  const auto entry = map->second.find(text);
  return entry == map->second.end() ? nullptr : &entry->second;
}

}  // namespace

void ReadCache::Clear() { *this = ReadCache(); }

const std::int64_t* ReadCache::FindKey(std::int64_t below, const std::string& path) const {
  return Find(keys_, below, path);
}

void ReadCache::KeepKey(std::int64_t below, const std::string& path, std::int64_t key) {
  MakeRoom();
  keys_[below][path] = key;
}

const ReadCache::Value* ReadCache::FindValue(std::int64_t key, const std::string& name) const {
  return Find(values_, key, name);
}

const ReadCache::Value* ReadCache::KeepValue(std::int64_t key, const std::string& name, Value value) {
  MakeRoom();
  return &(values_[key][name] = std::move(value));
}

const std::vector<std::string>* ReadCache::FindNames(std::int64_t key) const {
  return names_key_ == key ? &names_ : nullptr;
}

const std::vector<std::string>* ReadCache::KeepNames(std::int64_t key, std::vector<std::string> names) {
  names_key_ = key;
  names_ = std::move(names);
  return &names_;
}

void ReadCache::MakeRoom() {
  if (entries_ == kMostEntries) Clear();
  ++entries_;
}

}  // namespace mirelo::sqlite
