#include "com/foreign.h"

#include <optional>
#include <utility>

#include "automation/runtime_error.h"
#include "com/calls.h"

namespace mirelo::com {

namespace {

DISPID RequiredMember(IDispatch& object, std::string_view name) {
  const auto id = MemberNamed(object, name);
  if (!id) throw Errors::MemberNotFound();
  return *id;
}

ForeignMeaning& Meaning() {
  static ForeignMeaning& meaning = *new ForeignMeaning;  // clients may call until the process ends
  return meaning;
}

}  // namespace

std::string_view Foreign::TypeName() const {
  if (type_name_.empty()) {
    std::optional<std::string> told = ClassNameOf(*reference_.get());
    if (!told) return "Object";
    type_name_ = std::move(*told);
  }
  return type_name_;
}

bool Foreign::Has(std::string_view member) const {
  return MemberNamed(*reference_.get(), member).has_value();
}

Variant Foreign::Get(std::string_view member, std::span<const Variant> arguments) {
  return GetMember(*reference_.get(), RequiredMember(*reference_.get(), member), arguments);
}

void Foreign::Let(std::string_view member, const Variant& value, std::span<const Variant> arguments) {
  PutMember(*reference_.get(), RequiredMember(*reference_.get(), member), value, arguments);
}

void TakeForeignObjectsFor(ForeignMeaning meaning) { Meaning() = std::move(meaning); }

Variant Entering(Variant value) {
  if (!value.IsObject() || !Meaning().entering) return value;
  const auto foreign = std::dynamic_pointer_cast<Foreign>(value.AsObject());
  if (foreign == nullptr) return value;
  auto stands_for_it = Meaning().entering(foreign);
  return stands_for_it != nullptr ? Variant(std::move(stands_for_it)) : value;
}

Variant Leaving(Variant value) {
  if (!value.IsObject() || value.AsObject() == nullptr || !Meaning().leaving) return value;
  auto foreign = Meaning().leaving(*value.AsObject());
  return foreign != nullptr ? Variant(std::shared_ptr<Object>(std::move(foreign))) : value;
}

}  // namespace mirelo::com
