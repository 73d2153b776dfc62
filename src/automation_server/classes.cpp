#include "automation_server/classes.h"

#include <typeindex>
#include <typeinfo>
#include <unordered_map>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation_server/excel/tables.h"
#include "automation_server/tables.h"

namespace mirelo::automation_server {

namespace {

std::vector<Class>& KnownClasses() {
  static std::vector<Class> classes = [] {
    std::vector<Class> all;
    all.push_back(FacadeClass());
    all.push_back(StreamClass());
    all.push_back(QuoteClass());
    all.push_back(QuotesClass());
    all.push_back(TickerStateClass());
    all.push_back(TickerStatesClass());
    all.push_back(SettingsStoreClass());
    all.push_back(TransferClass());
    excel::AddProgramClasses(all);
    excel::AddSheetClasses(all);
    excel::AddFormatClasses(all);
    excel::AddShapeClasses(all);
    excel::AddChartClasses(all);
    excel::AddChartPartClasses(all);
    return all;
  }();
  return classes;
}

}  // namespace

std::span<const Class> Classes() { return KnownClasses(); }

void AddClass(Class added) { KnownClasses().push_back(std::move(added)); }

const Class* ClassNamed(std::string_view name) {
  for (const Class& known : Classes()) {
    if (EqualText(known.name(), name)) return &known;
  }
  return nullptr;
}

const Class& ClassOf(const Object& object) {
  // The classes of the tables may be abstract, so an object is asked once for each type that it is of.
  static std::unordered_map<std::type_index, const Class*> by_type;
  static const Class without_members("", typeid(Object), [](const Object&) { return true; }, nullptr, {});

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
