#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "automation/collection.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "core/record_collection.h"

// The members of RecordCollection, for the sources that fill collections: their clients need neither this nor
// what collections are made of. A source that makes one of a new kind of record instantiates it.
//
// The members are compiled once, where they are instantiated, but for the two inline ones: the decoder calls
// these for each record. Walking is not among them, since each item that is walked to costs its client more.

namespace mirelo {

template <class T>
struct RecordCollection<T>::Items : Collection<Reference> {};

template <class T>
RecordCollection<T>::Enumerator::Enumerator(std::shared_ptr<const Items> items)
    : items_(std::move(items)), place_(items_->BeginWalk()) {}

template <class T>
RecordCollection<T>::Enumerator::Enumerator(const Enumerator& other)
    : items_(other.items_), place_(other.place_) {
  if (items_) items_->JoinWalk();
}

template <class T>
RecordCollection<T>::Enumerator::Enumerator(Enumerator&& other) noexcept
    : items_(std::move(other.items_)), place_(other.place_) {}

template <class T>
auto RecordCollection<T>::Enumerator::operator=(Enumerator other) noexcept -> Enumerator& {
  items_.swap(other.items_);
  std::swap(place_, other.place_);
  return *this;
}

template <class T>
RecordCollection<T>::Enumerator::~Enumerator() {
  if (items_) items_->EndWalk();
}

template <class T>
auto RecordCollection<T>::Enumerator::Next() -> Reference {
  const Reference* const item = items_->NextOf(place_);
  return item == nullptr ? nullptr : *item;
}

template <class T>
RecordCollection<T>::RecordCollection(const RecordClass& names)
    : class_(names), items_(std::make_shared<Items>()) {}

template <class T>
template <class Body>
auto RecordCollection<T>::Guarded(std::string_view routine, Body&& body) const {
  return AnyFailureAs(
      [&] {
        return RuntimeError(
            ErrorNumber(0x80040064), std::string(class_.name) + " component failure",
            std::string(class_.source_prefix).append(class_.name).append(".").append(routine));
      },
      std::forward<Body>(body));
}

template <class T>
std::shared_ptr<T> NewRecord(std::string_view key) {
  auto item = std::make_shared<T>();
  Identify(*item, key);
  return item;
}

template <class T>
auto RecordCollection<T>::ItemAt(const Variant& index) const -> Reference {
  if (const std::string* key = index.IfText()) return items_->Item(*key);
  return items_->Item(index.ToInt32());
}

template <class T>
void RecordCollection<T>::Add(Reference item, const Variant& VarKey) {
  Guarded("Add", [&] {
    if (item == nullptr) throw Errors::ObjectNotSet();
    if (VarKey.IsEmpty()) return items_->Add(std::move(item));
    const std::string* key = VarKey.IfText();
    if (key == nullptr) throw Errors::TypeMismatch();
    items_->Add(std::move(item), *key);
  });
}

template <class T>
void RecordCollection<T>::Remove(const Variant& VarIndex) {
  Guarded("Remove", [&] {
    if (const std::string* key = VarIndex.IfText()) return items_->Remove(*key);
    items_->Remove(VarIndex.ToInt32());
  });
}

template <class T>
auto RecordCollection<T>::Item(const Variant& VarIndex) const -> Reference {
  return Guarded("Item", [&] { return ItemAt(VarIndex); });
}

template <class T>
auto RecordCollection<T>::ItemAdd(const Variant& VarIndex) -> Reference {
  return Guarded("ItemAdd", [&] {
    if (const std::string* key = VarIndex.IfText()) return FindOrAdd(*key);
    return ItemAt(VarIndex);
  });
}

template <class T>
inline auto RecordCollection<T>::FindOrAdd(std::string_view key) -> const Reference& {
  return items_->FindOrAdd(key, [&] { return NewRecord<T>(key); });
}

template <class T>
inline auto RecordCollection<T>::AddNew(std::string_view key) -> const Reference& {
  return items_->AddNew(NewRecord<T>(key), key);
}

template <class T>
std::int32_t RecordCollection<T>::Count() const {
  return items_->Count();
}

template <class T>
void RecordCollection<T>::Clear() {
  Guarded("Clear", [&] {
    if (items_.use_count() == 1) return items_->Clear();  // no enumerator can tell
    items_ = std::make_shared<Items>();
  });
}

template <class T>
bool RecordCollection<T>::TrySwap(RecordCollection& other) {
  if (items_.use_count() != 1 || other.items_.use_count() != 1) return false;
  items_.swap(other.items_);
  return true;
}

}  // namespace mirelo
