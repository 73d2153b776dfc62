#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <iterator>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "automation/collection_iterator.h"
#include "automation/key_index.h"
#include "automation/runtime_error.h"
#include "automation/text.h"

namespace mirelo {

// Items in the order in which they were added, each with a text key or none. Keys are compared without regard
// to case.
//
// Append, access and removal by key, and removal at either end take constant time, however many items there
// are. Access by index does too, but for the first one after removals from the middle, which closes their
// gaps in one go. References to items stay valid until the item is removed or, after a removal from the
// middle, until the next change or access by index.
//
// Iteration may add and remove items, the current one too: it goes on with the next item that is there, and
// meets items added meanwhile. An iterator must not outlive its collection.
template <class T>
class Collection {
 public:
  using iterator = CollectionIterator<Collection>;
  using const_iterator = CollectionIterator<const Collection>;

  Collection() = default;
  Collection(const Collection&) = delete;
  Collection& operator=(const Collection&) = delete;

  std::int32_t Count() const { return static_cast<std::int32_t>(slots_.size() - gaps_); }

  void Add(T item) { slots_.push_back(Slot{std::move(item), {}, 0, KeyState::kNone}); }

  // Error 457 when the key is present.
  void Add(T item, std::string_view key) {
    const std::uint32_t hash = Hash(key);
    if (Locate(key, hash) != nullptr) throw Errors::KeyAlreadyUsed();
    Append(std::move(item), key, hash);
  }

  // The same for a key of which the caller knows that it is not present. Such keys go into the index when one
  // is next looked for, so that items which are only passed on cost as little as items without key.
  T& AddNew(T item, std::string_view key) {
    slots_.push_back(Slot{std::move(item), std::string(key), 0, KeyState::kNotIndexed});
    ++not_indexed_;
    return *slots_.back().item;
  }

  // The item under the key; the one that `make()` gives is appended under it when there is none. It must not
  // change the collection itself.
  template <class Make>
  T& FindOrAdd(std::string_view key, Make&& make) {
    const std::uint32_t hash = Hash(key);
    if (const std::uint32_t* position = Locate(key, hash)) return *slots_[Offset(*position)].item;
    return Append(make(), key, hash);
  }

  // 1 to Count(); error 9 outside.
  T& Item(std::int32_t index) { return *slots_[OffsetOf(index)].item; }
  const T& Item(std::int32_t index) const { return *slots_[OffsetOf(index)].item; }

  // Error 5 when absent.
  T& Item(std::string_view key) { return const_cast<T&>(std::as_const(*this).Item(key)); }
  const T& Item(std::string_view key) const {
    if (const T* item = Find(key)) return *item;
    throw Errors::InvalidProcedureCall();
  }

  // Null when absent.
  T* Find(std::string_view key) { return const_cast<T*>(std::as_const(*this).Find(key)); }
  const T* Find(std::string_view key) const {
    const std::uint32_t* position = Locate(key, Hash(key));
    return position == nullptr ? nullptr : &*slots_[Offset(*position)].item;
  }

  // Errors as Item.
  void Remove(std::int32_t index) { RemoveAt(OffsetOf(index)); }
  void Remove(std::string_view key) {
    const std::uint32_t* position = Locate(key, Hash(key));
    if (position == nullptr) throw Errors::InvalidProcedureCall();
    RemoveAt(Offset(*position));
  }

  // Gives the memory of many items back as well; that of a few is kept for the next ones. Raises nothing,
  // whatever memory there is.
  void Clear() {
    gaps_ = 0;
    not_indexed_ = 0;
    keys_.Clear();
    if (slots_.size() > kFew && TryClearAtOnce()) return;
    // The end of an item may call back into this collection; what it adds stays.
    for (const std::uint64_t end = first_ + slots_.size(); first_ < end;) {
      const Slot removed = std::move(slots_.front());
      slots_.pop_front();
      ++first_;
    }
  }

  iterator begin() { return iterator(*this); }
  const_iterator begin() const { return const_iterator(*this); }
  std::default_sentinel_t end() const { return {}; }

  // Iteration for whoever keeps the place and not an iterator. BeginWalk gives the first place and begins a
  // walk, JoinWalk begins one at a place that another one has, and EndWalk ends one.
  std::uint64_t BeginWalk() const {
    JoinWalk();
    return first_;
  }
  void JoinWalk() const { ++walks_; }
  void EndWalk() const { --walks_; }
  // The item at the place, or the next one that is there, and leaves the place behind it. Null at the end.
  const T* NextOf(std::uint64_t& place) const {
    SkipGaps(place);
    if (OffsetOfPlace(place) >= slots_.size()) return nullptr;
    return &*slots_[OffsetOfPlace(place++)].item;
  }
  T* NextOf(std::uint64_t& place) { return const_cast<T*>(std::as_const(*this).NextOf(place)); }

 private:
  enum class KeyState : std::uint8_t { kNone, kNotIndexed, kIndexed };

  // A place in the order. The item of a removed one in the middle is gone, the place stays until gaps are
  // closed.
  struct Slot {
    std::optional<T> item;
    std::string key;
    std::uint32_t hash = 0;  // of an indexed key
    KeyState key_state = KeyState::kNone;
  };

  static constexpr std::size_t kFew = 16;

  T& Append(T&& item, std::string_view key, std::uint32_t hash) {
    keys_.Reserve();
    slots_.push_back(Slot{std::move(item), std::string(key), hash, KeyState::kIndexed});
    keys_.Insert(hash, Position(slots_.size() - 1));
    return *slots_.back().item;
  }

  bool TryClearAtOnce() {
    try {
      std::deque<Slot> removed;  // an empty one asks for memory, too
      removed.swap(slots_);
      first_ += removed.size();
      return true;
    } catch (const std::bad_alloc&) {
      return false;
    }
  }

  // Nothing is indexed behind a key that is not, since all other ways to add look for the key first.
  void CompleteIndex() const {
    for (std::size_t offset = slots_.size(); not_indexed_ > 0;) {
      Slot& slot = slots_[--offset];
      if (slot.key_state != KeyState::kNotIndexed) continue;
      keys_.Reserve();
      slot.hash = Hash(slot.key);
      slot.key_state = KeyState::kIndexed;
      keys_.Insert(slot.hash, Position(offset));
      --not_indexed_;
    }
  }

  static std::uint32_t Hash(std::string_view key) { return static_cast<std::uint32_t>(HashText(key)); }

  // Places are numbered through the life of the collection, so that removals at the front move no entry of
  // the index, which keeps the low 32 bits.
  std::uint32_t Position(std::size_t offset) const { return static_cast<std::uint32_t>(first_ + offset); }
  std::size_t Offset(std::uint32_t position) const {
    return static_cast<std::uint32_t>(position - static_cast<std::uint32_t>(first_));
  }

  std::size_t OffsetOfPlace(std::uint64_t place) const { return static_cast<std::size_t>(place - first_); }
  // Everything before the first place may be gone since the last step.
  void SkipGaps(std::uint64_t& place) const {
    place = std::max(place, first_);
    while (OffsetOfPlace(place) < slots_.size() && !slots_[OffsetOfPlace(place)].item) ++place;
  }

  const std::uint32_t* Locate(std::string_view key, std::uint32_t hash) const {
    CompleteIndex();
    return keys_.Find(hash,
                      [&](std::uint32_t position) { return EqualText(slots_[Offset(position)].key, key); });
  }

  std::size_t OffsetOf(std::int32_t index) const {
    if (index < 1 || index > Count()) throw Errors::SubscriptOutOfRange();
    const auto wanted = static_cast<std::size_t>(index) - 1;
    if (gaps_ == 0) return wanted;
    if (walks_ > 0) return OffsetPastGaps(wanted);
    CloseGaps();
    return wanted;
  }

  std::size_t OffsetPastGaps(std::size_t wanted) const {
    std::size_t offset = 0;
    while (!slots_[offset].item || wanted-- > 0) ++offset;
    return offset;
  }

  // What was removed is destroyed last, since its end may call back into this collection.
  void RemoveAt(std::size_t offset) {
    Slot& slot = slots_[offset];
    const Slot removed = std::exchange(slot, Slot());
    if (removed.key_state == KeyState::kIndexed) keys_.Remove(removed.hash, Position(offset));
    if (removed.key_state == KeyState::kNotIndexed) --not_indexed_;
    ++gaps_;
    TrimEnds();
    if (gaps_ > slots_.size() / 2 && walks_ == 0) CloseGaps();
  }

  void TrimEnds() {
    for (; !slots_.empty() && !slots_.front().item; --gaps_, ++first_) slots_.pop_front();
    if (walks_ > 0) return;  // one may stand on the last place, whose number must not be given again
    for (; !slots_.empty() && !slots_.back().item; --gaps_) slots_.pop_back();
  }

  // Not while an iterator stands on a place.
  void CloseGaps() const {
    std::size_t to = 0;
    for (std::size_t from = 0; from < slots_.size(); ++from) {
      Slot& slot = slots_[from];
      if (!slot.item) continue;
      if (to != from) {
        if (slot.key_state == KeyState::kIndexed) keys_.Move(slot.hash, Position(from), Position(to));
        slots_[to] = std::move(slot);
      }
      ++to;
    }
    slots_.resize(to);
    gaps_ = 0;
  }

  // Closing gaps and completing the index change nothing that can be observed, so access may do it.
  mutable std::deque<Slot> slots_;
  mutable KeyIndex keys_;
  mutable std::size_t gaps_ = 0;
  mutable std::size_t not_indexed_ = 0;
  mutable std::int32_t walks_ = 0;  // how many there are, those of iterators too
  std::uint64_t first_ = 0;         // number of the first place
};

}  // namespace mirelo
