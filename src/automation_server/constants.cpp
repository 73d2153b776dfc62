#include "automation_server/constants.h"

#include <array>

#include "core/status_run_query.h"

namespace mirelo::automation_server {

namespace {

#define CONSTANT(Name) \
  Constant { #Name, Name }

constexpr std::array kStatusRunQueryQT{
    CONSTANT(Status_Null),
    CONSTANT(Status_ENUMSOURCES_L1),
    CONSTANT(Status_LEVEL_I_FULL_QUOTE),
};

#undef CONSTANT

}  // namespace

std::span<const ConstantList> ConstantLists() {
  static const std::array lists{
      ConstantList{"StatusRunQueryQT", typeid(StatusRunQueryQT), kStatusRunQueryQT},
  };
  return lists;
}

}  // namespace mirelo::automation_server
