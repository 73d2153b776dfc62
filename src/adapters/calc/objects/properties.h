#pragma once

#include <com/sun/star/beans/PropertyState.hpp>
#include <com/sun/star/beans/XMultiPropertySet.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/uno/Sequence.hxx>
#include <optional>
#include <string_view>

#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/office_text.h"

namespace mirelo::calc {

// The properties of an object of the office, by their names.
class Properties {
 public:
  template <class Held>
  explicit Properties(const Held& held) : set_(As<css::beans::XPropertySet>(held)) {}

  template <class Value>
  void Set(std::string_view name, const Value& value) const {
    set_->setPropertyValue(OfficeText(name), Any(value));
  }

  // Several at once, which takes the office as long as one.
  void Set(const css::uno::Sequence<rtl::OUString>& names, const css::uno::Sequence<Any>& values) const {
    As<css::beans::XMultiPropertySet>(set_)->setPropertyValues(names, values);
  }

  Any Get(std::string_view name) const { return set_->getPropertyValue(OfficeText(name)); }

  // `otherwise` where it holds nothing of this type.
  template <class Value>
  Value Get(std::string_view name, Value otherwise) const {
    Get(name) >>= otherwise;
    return otherwise;
  }

  // Sets it back to its default.
  void Reset(std::string_view name) const {
    As<css::beans::XPropertyState>(set_)->setPropertyToDefault(OfficeText(name));
  }

  // Nothing where the cells of a range differ in it.
  template <class Value>
  std::optional<Value> Common(std::string_view name) const {
    const auto states = IfAs<css::beans::XPropertyState>(set_);
    const bool differs = states.is() && states->getPropertyState(OfficeText(name)) ==
                                            css::beans::PropertyState_AMBIGUOUS_VALUE;
    Value value;
    if (differs || !(Get(name) >>= value)) return std::nullopt;
    return value;
  }

 private:
  Reference<css::beans::XPropertySet> set_;
};

}  // namespace mirelo::calc
