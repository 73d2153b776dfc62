#include "com/foreign.h"

#include <utility>

#include "automation/runtime_error.h"
#include "com/calls.h"
#include "com/text.h"

namespace mirelo::com {

namespace {

Held<ITypeInfo> TypeInformationOf(IDispatch& object) {
  Held<ITypeInfo> information;
  const auto classed = Asked<IProvideClassInfo>(&object, IID_IProvideClassInfo);
  if (classed && SUCCEEDED(classed->GetClassInfo(information.Place<ITypeInfo**>())) && information)
    return information;
  if (FAILED(object.GetTypeInfo(0, kEnglish, information.Place<ITypeInfo**>()))) return {};
  return information;
}

// The interface of a class is often named as the class is, with a line in front.
std::string ClassNameIn(ITypeInfo& information) {
  BSTR told = nullptr;
  if (FAILED(information.GetDocumentation(MEMBERID_NIL, &told, nullptr, nullptr, nullptr))) return {};
  std::string name = TextOf(told);
  ::SysFreeString(told);
  if (name.starts_with('_')) name.erase(0, 1);
  return name;
}

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
    if (const auto information = TypeInformationOf(*reference_.get()))
      type_name_ = ClassNameIn(*information.get());
    if (type_name_.empty()) type_name_ = "Object";
  }
  return type_name_;
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
