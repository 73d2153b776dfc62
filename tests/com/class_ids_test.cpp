// Clients' machines know the classes by numbers, which stand in a list of their own.

#include "com/class_ids.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "automation_server/classes.h"
#include "automation_server/constants.h"

namespace mirelo {
namespace {

TEST(ClassIds, AreOneForEachClassThatClientsCanMake) {
  std::set<std::string> creatable;
  for (const auto& known : automation_server::Classes()) {
    if (known.IsCreatable()) creatable.emplace(known.name());
  }
  ASSERT_EQ(creatable.size(), 8U);
  std::set<std::string> listed;
  for (const com::ClassId& known : com::ClassIds()) listed.emplace(known.name);
  EXPECT_EQ(listed, creatable);
}

TEST(ClassIds, DifferFromOneAnother) {
  for (const com::ClassId& one : com::ClassIds()) {
    for (const com::ClassId& other : com::ClassIds()) {
      EXPECT_EQ(one.id == other.id, one.name == other.name) << one.name << " and " << other.name;
      EXPECT_FALSE(one.id == com::EventsOf(other.name)) << one.name << " and the events of " << other.name;
    }
  }
}

TEST(ClassIds, OfEnumerationsAreThereForEachThatMembersDeclare) {
  ASSERT_FALSE(automation_server::ConstantLists().empty());
  for (const auto& known : automation_server::ConstantLists())
    EXPECT_FALSE(com::ConstantsOf(known.name) == GUID_NULL) << known.name;
}

TEST(ClassIds, OfEventsAreThereWhereAClassHasSome) {
  for (const auto& known : automation_server::Classes()) {
    EXPECT_EQ(com::EventsOf(known.name()) == IID_NULL, known.events().empty()) << known.name();
  }
}

}  // namespace
}  // namespace mirelo
