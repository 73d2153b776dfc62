#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "automation/variant.h"

namespace mirelo::automation_server {

// A walk through the items of a collection, one for each For Each. It outlives its collection, and follows
// what is added and removed meanwhile as that says.
class Enumeration : public Object {
 public:
  std::string_view TypeName() const override { return "Enumeration"; }

  // Nothing behind the last item.
  virtual std::optional<Variant> Next() = 0;
  // Another walk that stands where this one does.
  virtual std::shared_ptr<Enumeration> Clone() const = 0;
};

// By the numbers of the items, for a class that has `Count()` and `Item(number)`. Where items are removed or
// added meanwhile, the walk goes on with the next number.
template <class Items>
class EnumerationByNumber : public Enumeration {
 public:
  explicit EnumerationByNumber(std::shared_ptr<Items> items, std::int32_t next = 1)
      : items_(std::move(items)), next_(next) {}

  std::optional<Variant> Next() override {
    if (next_ > items_->Count()) return std::nullopt;
    return Variant(items_->Item(next_++));
  }
  std::shared_ptr<Enumeration> Clone() const override {
    return std::make_shared<EnumerationByNumber>(items_, next_);
  }

 private:
  std::shared_ptr<Items> items_;
  std::int32_t next_;
};

// By an enumerator of one of our classes: a value with `Next()`, which is null behind the last item.
template <class Enumerator>
class EnumerationBy : public Enumeration {
 public:
  explicit EnumerationBy(Enumerator enumerator) : enumerator_(std::move(enumerator)) {}

  std::optional<Variant> Next() override {
    auto item = enumerator_.Next();
    if (item == nullptr) return std::nullopt;
    return Variant(std::move(item));
  }
  std::shared_ptr<Enumeration> Clone() const override { return std::make_shared<EnumerationBy>(enumerator_); }

 private:
  Enumerator enumerator_;
};

}  // namespace mirelo::automation_server
