#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace mirelo {

// A hash table of positions, for Collection: finds the position of a key without holding the keys, which lie
// with the items. Open addressing with linear probing, so it allocates only to grow.
//
// Positions are numbers modulo 2^32. `Matches` says whether the key at a position is the one wanted; it is
// asked only for entries with the same hash.
class KeyIndex {
 public:
  // Makes room for one more entry; Insert itself never allocates.
  void Reserve() {
    if ((count_ + 1) * 4 > entries_.size() * 3) Grow();
  }

  void Insert(std::uint32_t hash, std::uint32_t position) noexcept {
    std::size_t slot = Home(hash);
    while (entries_[slot].used) slot = Next(slot);
    entries_[slot] = {hash, position, true};
    ++count_;
  }

  // The position, or nothing.
  template <class Matches>
  const std::uint32_t* Find(std::uint32_t hash, Matches&& matches) const {
    if (count_ == 0) return nullptr;
    for (std::size_t slot = Home(hash); entries_[slot].used; slot = Next(slot)) {
      if (entries_[slot].hash == hash && matches(entries_[slot].position)) return &entries_[slot].position;
    }
    return nullptr;
  }

  // Removes the entry of a position that is present. The entries behind it move up where their own places
  // allow, so that no markers of removed entries pile up.
  void Remove(std::uint32_t hash, std::uint32_t position) noexcept {
    std::size_t hole = SlotOf(hash, position);
    for (std::size_t slot = Next(hole); entries_[slot].used; slot = Next(slot)) {
      const std::size_t distance_from_home = (slot - Home(entries_[slot].hash)) & Mask();
      const std::size_t distance_from_hole = (slot - hole) & Mask();
      if (distance_from_home < distance_from_hole) continue;
      entries_[hole] = entries_[slot];
      hole = slot;
    }
    entries_[hole].used = false;
    --count_;
  }

  // Changes the position in an entry. The entry must be present.
  void Move(std::uint32_t hash, std::uint32_t from, std::uint32_t to) noexcept {
    entries_[SlotOf(hash, from)].position = to;
  }

  // Gives the memory of many entries back as well.
  void Clear() noexcept {
    if (entries_.size() > kFew) {
      *this = KeyIndex();
    } else if (count_ > 0) {
      for (Entry& entry : entries_) entry.used = false;
      count_ = 0;
    }
  }

 private:
  struct Entry {
    std::uint32_t hash = 0;
    std::uint32_t position = 0;
    bool used = false;
  };

  static constexpr std::size_t kFew = 32;

  std::size_t Mask() const { return entries_.size() - 1; }
  std::size_t Home(std::uint32_t hash) const { return hash & Mask(); }
  std::size_t Next(std::size_t slot) const { return (slot + 1) & Mask(); }

  std::size_t SlotOf(std::uint32_t hash, std::uint32_t position) const {
    std::size_t slot = Home(hash);
    while (entries_[slot].position != position || entries_[slot].hash != hash) slot = Next(slot);
    return slot;
  }

  void Grow() {
    std::vector<Entry> old(entries_.empty() ? 16 : entries_.size() * 2);
    old.swap(entries_);
    count_ = 0;
    for (const Entry& entry : old) {
      if (entry.used) Insert(entry.hash, entry.position);
    }
  }

  std::vector<Entry> entries_;  // as many as a power of two, or none
  std::size_t count_ = 0;
};

}  // namespace mirelo
