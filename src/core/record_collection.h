#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "automation/collection.h"
#include "automation/runtime_error.h"
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
template <class T>
class RecordCollection : public Object {
 public:
  using Reference = std::shared_ptr<T>;
  using Items = Collection<Reference>;

  // Walks the items in their order, and those that are added during the walk too, but for those that are
  // removed before their turn. After a Clear() it goes on
  // through the items from before it.
  class Enumerator {
   public:
    explicit Enumerator(std::shared_ptr<const Items> items)
        : items_(std::move(items)), at_(items_->begin()) {}
    // Null behind the last item.
    Reference Next() {
      at_.Settle();
      if (at_ == items_->end()) return nullptr;
      Reference item = *at_;
      ++at_;
      return item;
    }

   private:
    std::shared_ptr<const Items> items_;
    typename Items::const_iterator at_;
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
  void Add(Reference item, const Variant& VarKey = {}) {
    Guarded("Add", [&] {
      if (item == nullptr) throw Errors::ObjectNotSet();
      if (VarKey.IsEmpty()) return items_->Add(std::move(item));
      const std::string* key = VarKey.IfText();
      if (key == nullptr) throw Errors::TypeMismatch();
      items_->Add(std::move(item), *key);
    });
  }

  // By position or key.
  void Remove(const Variant& VarIndex) {
    Guarded("Remove", [&] {
      if (const std::string* key = VarIndex.IfText()) return items_->Remove(*key);
      items_->Remove(VarIndex.ToInt32());
    });
  }

  // By position or key; an absent one is a failure.
  Reference Item(const Variant& VarIndex) const {
    return Guarded("Item", [&] { return ItemAt(VarIndex); });
  }

  // The item at a position or under a key. When no item has the key one is made under it, and the key becomes
  // its identity. A position out of range is a failure, since nothing can be made under it.
  Reference ItemAdd(const Variant& VarIndex) {
    return Guarded("ItemAdd", [&] {
      if (const std::string* key = VarIndex.IfText()) return FindOrAdd(*key);
      return ItemAt(VarIndex);
    });
  }

  // ItemAdd for a key that the caller has as text. What fails is raised as it is, not as this class's
  // failure.
  const Reference& FindOrAdd(std::string_view key) {
    return items_->FindOrAdd(key, [&] { return New(key); });
  }
  // ItemAdd for a key of which the caller knows that no item has it.
  const Reference& AddNew(std::string_view key) { return items_->AddNew(New(key), key); }

  std::int32_t Count() const { return items_->Count(); }

  // Lets go of all items. They live on where someone else holds them.
  void Clear() {
    Guarded("Clear", [&] {
      if (items_.use_count() == 1) return items_->Clear();  // no enumerator can tell
      items_ = std::make_shared<Items>();
    });
  }

  Enumerator NewEnum() const { return Enumerator(items_); }
  Iterator begin() const { return Iterator(NewEnum()); }
  std::default_sentinel_t end() const { return {}; }

 protected:
  explicit RecordCollection(const RecordClass& names) : class_(names) {}

  Items& items() { return *items_; }
  // Swaps the items with those of another collection. False, with nothing done, when an enumerator walks
  // either.
  bool TrySwap(RecordCollection& other) {
    if (items_.use_count() != 1 || other.items_.use_count() != 1) return false;
    items_.swap(other.items_);
    return true;
  }

 private:
  template <class Body>
  auto Guarded(std::string_view routine, Body&& body) const {
    return AnyFailureAs(
        [&] {
          return RuntimeError(
              ErrorNumber(0x80040064), std::string(class_.name) + " component failure",
              std::string(class_.source_prefix).append(class_.name).append(".").append(routine));
        },
        std::forward<Body>(body));
  }

  static Reference New(std::string_view key) {
    auto item = std::make_shared<T>();
    Identify(*item, key);
    return item;
  }

  Reference ItemAt(const Variant& index) const {
    if (const std::string* key = index.IfText()) return items_->Item(*key);
    return items_->Item(index.ToInt32());
  }

  RecordClass class_;
  std::shared_ptr<Items> items_ = std::make_shared<Items>();  // shared with enumerators
};

}  // namespace mirelo
