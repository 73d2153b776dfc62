#include "late_bound.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/excel/foreign_object.h"
#include "adapters/excel/late_application.h"
#include "automation/variant.h"
#include "automation_server/automation_object.h"
#include "program_members.h"

namespace mirelo::testing {
namespace {

using automation_server::Arguments;
using automation_server::AutomationObject;

// The door of an object, as a client of another program sees it.
class DoorFromOutside : public excel::ForeignObject {
 public:
  using Assigning = std::function<void(std::string_view)>;

  DoorFromOutside(std::shared_ptr<AutomationObject> door, Assigning assigning)
      : door_(std::move(door)), assigning_(std::move(assigning)) {}

  std::string_view TypeName() const override { return door_->object()->TypeName(); }
  Variant Get(std::string_view member, std::vector<Variant> arguments) override {
    const Variant given = door_->Call(door_->IdOf(member), InsideAll(std::move(arguments)));
    EXPECT_TRUE(ListedMembers().at(std::string(TypeName())).at(std::string(member)).Gives(given))
        << "no program answers " << TypeName() << "." << member << " with " << given.TypeName();
    return FromInside(given);
  }
  void Let(std::string_view member, const Variant& value, std::vector<Variant> arguments) override {
    if (assigning_) assigning_(member);
    door_->Let(door_->IdOf(member), Inside(value), InsideAll(std::move(arguments)));
  }

 private:
  Variant FromInside(Variant value) const {
    if (!value.IsObject() || value.AsObject() == nullptr) return value;
    return std::make_shared<DoorFromOutside>(AutomationObject::Of(value.AsObject()), assigning_);
  }
  static Variant Inside(const Variant& value) {
    if (!value.IsObject() || value.AsObject() == nullptr) return value;
    return dynamic_cast<DoorFromOutside&>(*value.AsObject()).door_->object();
  }
  static Arguments InsideAll(std::vector<Variant> values) {
    Arguments arguments;
    for (const Variant& value : values) arguments.emplace_back(Inside(value));
    return arguments;
  }

  std::shared_ptr<AutomationObject> door_;
  Assigning assigning_;
};

}  // namespace

std::shared_ptr<host::excel::Application> CalledByNames(
    std::shared_ptr<host::excel::Application> application) {
  return CalledByNames(std::move(application), nullptr);
}

std::shared_ptr<host::excel::Application> CalledByNames(std::shared_ptr<host::excel::Application> application,
                                                        std::function<void(std::string_view)> assigning) {
  auto door = AutomationObject::Of(std::move(application));
  return excel::LateBoundApplication(
      std::make_shared<DoorFromOutside>(std::move(door), std::move(assigning)));
}

}  // namespace mirelo::testing
