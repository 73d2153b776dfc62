#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <type_traits>
#include <utility>

namespace mirelo {

// Stands on an item of a collection, or at its end. It may be copied; reading it is allowed until its item is
// removed. One at the end stays there, whatever is added.
template <class Owner>
class CollectionIterator {
  using Item = decltype(std::declval<Owner&>().NextOf(std::declval<std::uint64_t&>()));

 public:
  using pointer = Item;
  using reference = decltype(*std::declval<Item>());
  using value_type = std::remove_cvref_t<reference>;
  using difference_type = std::ptrdiff_t;
  using iterator_category = std::input_iterator_tag;

  explicit CollectionIterator(Owner& owner)
      : owner_(&owner), place_(owner.BeginWalk()), item_(owner.NextOf(place_)) {}
  CollectionIterator(const CollectionIterator& other)
      : owner_(other.owner_), place_(other.place_), item_(other.item_) {
    owner_->JoinWalk();
  }
  CollectionIterator& operator=(const CollectionIterator& other) {
    if (this == &other) return *this;
    other.owner_->JoinWalk();
    owner_->EndWalk();
    owner_ = other.owner_;
    place_ = other.place_;
    item_ = other.item_;
    return *this;
  }
  ~CollectionIterator() { owner_->EndWalk(); }

  reference operator*() const { return *item_; }
  pointer operator->() const { return item_; }

  CollectionIterator& operator++() {
    item_ = owner_->NextOf(place_);
    return *this;
  }
  void operator++(int) { ++*this; }

  bool operator==(std::default_sentinel_t) const { return item_ == nullptr; }

 private:
  Owner* owner_;
  std::uint64_t place_;  // behind the item
  Item item_;            // null at the end
};

}  // namespace mirelo
