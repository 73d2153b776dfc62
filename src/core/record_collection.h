#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

#include "automation/variant.h"

namespace mirelo {

// The names that a collection class shows: its own, and the prefix of its error sources.
struct RecordClass {
  std::string_view name;
  std::string_view source_prefix;
};

// What the collections of quote records have in common: items in insertion order, found by position from 1 or
// by a text key without regard to case. Items are shared: the collection and its clients hold the same
// object.
//
// Whatever fails in a member is raised as 0x80040064, the class name followed by " component failure", with
// the member's dotted name as source.
//
// The members are defined in core/record_items.h, for the classes that say which collections there are.
template <class T>
class RecordCollection : public Object {
 public:
  using Reference = std::shared_ptr<T>;
  struct Items;

  // Walks the items in their order, and those that are added during the walk too, but for those that are
  // removed before their turn. After a Clear() it goes on
  // through the items from before it.
  class Enumerator {
   public:
    explicit Enumerator(std::shared_ptr<const Items> items);
    Enumerator(const Enumerator& other);
    Enumerator(Enumerator&& other) noexcept;
    Enumerator& operator=(Enumerator other) noexcept;
    ~Enumerator();
    // Null behind the last item.
    Reference Next();

   private:
    std::shared_ptr<const Items> items_;  // null when it was moved from
    std::uint64_t place_;
  };

  // The same for range-for.
  class Iterator {
   public:
    using value_type = Reference;
    using difference_type = std::ptrdiff_t;
    explicit Iterator(Enumerator enumerator)
        : enumerator_(std::move(enumerator)), item_(enumerator_.Next()) {}
    const Reference& operator*() const { return item_; }
    Iterator& operator++() {
      item_ = enumerator_.Next();
      return *this;
    }
    void operator++(int) { ++*this; }
    bool operator==(std::default_sentinel_t) const { return item_ == nullptr; }

   private:
    Enumerator enumerator_;
    Reference item_;
  };

  std::string_view TypeName() const override { return class_.name; }

  // Appends. The key is a text that no item has yet; an empty variant is none. A null item is a failure.
  void Add(Reference item, const Variant& VarKey = {});

  // By position or key.
  void Remove(const Variant& VarIndex);

  // By position or key; an absent one is a failure.
  Reference Item(const Variant& VarIndex) const;

  // The item at a position or under a key. When no item has the key one is made under it, and the key becomes
  // its identity. A position out of range is a failure, since nothing can be made under it.
  Reference ItemAdd(const Variant& VarIndex);

  // ItemAdd for a key that the caller has as text. What fails is raised as it is, not as this class's
  // failure.
  const Reference& FindOrAdd(std::string_view key);
  // ItemAdd for a key of which the caller knows that no item has it.
  const Reference& AddNew(std::string_view key);

  std::int32_t Count() const;

  // Lets go of all items. They live on where someone else holds them.
  void Clear();

  Enumerator NewEnum() const { return Enumerator(items_); }
  Iterator begin() const { return Iterator(NewEnum()); }
  std::default_sentinel_t end() const { return {}; }

 protected:
  explicit RecordCollection(const RecordClass& names);

  Items& items() { return *items_; }
  // Swaps the items with those of another collection. False, with nothing done, when an enumerator walks
  // either.
  bool TrySwap(RecordCollection& other);

 private:
  template <class Body>
  auto Guarded(std::string_view routine, Body&& body) const;
  Reference ItemAt(const Variant& index) const;

  RecordClass class_;
  std::shared_ptr<Items> items_;  // shared with enumerators
};

}  // namespace mirelo
