#pragma once

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
