#include "automation_server/classes.h"

#include <array>
#include <typeindex>
#include <typeinfo>
#include <unordered_map>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation_server/tables.h"

namespace mirelo::automation_server {

std::span<const Class> Classes() {
  static const std::array<Class, 8> tables{FacadeClass(),        StreamClass(),      QuoteClass(),
                                           QuotesClass(),        TickerStateClass(), TickerStatesClass(),
                                           SettingsStoreClass(), TransferClass()};
  return tables;
}

const Class* ClassNamed(std::string_view name) {
  for (const Class& known : Classes()) {
    if (EqualText(known.name(), name)) return &known;
  }
  return nullptr;
}

const Class& ClassOf(const Object& object) {
  // The classes of the tables may be abstract, so an object is asked once for each type that it is of.
  static std::unordered_map<std::type_index, const Class*> by_type;
  static const Class without_members("", [](const Object&) { return true; }, nullptr, {});

  const auto [found, is_new] = by_type.try_emplace(typeid(object), &without_members);
  if (is_new) {
    for (const Class& known : Classes()) {
      if (known.IsClassOf(object)) found->second = &known;
    }
  }
  return *found->second;
}

std::shared_ptr<Object> CreateObject(std::string_view class_name) {
  const Class* const named = ClassNamed(class_name);
  if (named == nullptr) throw Errors::CannotCreateObject();
  return AnyFailureAs(CurrentError, [&] { return named->New(); });
}

}  // namespace mirelo::automation_server
