#include "adapters/workbook/model/condition.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace mirelo::workbook {

Conditions::List Conditions::Touching(const Area& area) const {
  List touching;
  std::copy_if(list_.begin(), list_.end(), std::back_inserter(touching), [&](const auto& condition) {
    return std::any_of(condition->areas.begin(), condition->areas.end(),
                       [&](const Area& own) { return Shared(own, area).has_value(); });
  });
  return touching;
}

std::shared_ptr<Condition> Conditions::Add(Condition condition) {
  return list_.emplace_back(std::make_shared<Condition>(std::move(condition)));
}

void Conditions::Clear(const Area& area) {
  ChangeAreas([&](const AreaSet& areas) { return Without(areas, area); });
}

void Conditions::Delete(const Area& area) {
  ChangeAreas([&](const AreaSet& areas) { return AfterDeletion(areas, area); });
}

template <class Change>
void Conditions::ChangeAreas(Change&& change) {
  for (const auto& condition : list_) condition->areas = change(condition->areas);
  std::erase_if(list_, [](const auto& condition) { return condition->areas.empty(); });
}

}  // namespace mirelo::workbook
