#include "com/foreign.h"

#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/excel/foreign_object.h"
#include "adapters/excel/late.h"
#include "adapters/excel/late_application.h"
#include "automation/variant.h"
#include "host/excel/chart.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "windows/foreign_program.h"

namespace mirelo::windows {

namespace {

// An object of the program, as the adapter of spreadsheet programs calls it.
class ProgramObject : public excel::ForeignObject {
 public:
  explicit ProgramObject(std::shared_ptr<com::Foreign> foreign) : foreign_(std::move(foreign)) {}

  std::string_view TypeName() const override { return foreign_->TypeName(); }
  Variant Get(std::string_view member, std::vector<Variant> arguments) override {
    return FromProgram(foreign_->Get(member, ToProgram(std::move(arguments))));
  }
  void Let(std::string_view member, const Variant& value, std::vector<Variant> arguments) override {
    foreign_->Let(member, ToProgram(value), ToProgram(std::move(arguments)));
  }
  const std::shared_ptr<com::Foreign>& foreign() const { return foreign_; }

 private:
  static Variant FromProgram(Variant value) {
    if (!value.IsObject()) return value;
    auto foreign = std::dynamic_pointer_cast<com::Foreign>(value.AsObject());
    if (foreign == nullptr) return value;
    return Variant(std::shared_ptr<Object>(std::make_shared<ProgramObject>(std::move(foreign))));
  }
  static Variant ToProgram(const Variant& value) {
    if (!value.IsObject()) return value;
    const auto* const object = dynamic_cast<const ProgramObject*>(value.AsObject().get());
    return object != nullptr ? Variant(std::shared_ptr<Object>(object->foreign_)) : value;
  }
  static std::vector<Variant> ToProgram(std::vector<Variant> values) {
    for (Variant& value : values) value = ToProgram(value);
    return values;
  }

  std::shared_ptr<com::Foreign> foreign_;
};

std::shared_ptr<Object> MeaningOf(const std::shared_ptr<com::Foreign>& foreign) {
  const auto object = std::make_shared<ProgramObject>(foreign);
  const Variant value{std::shared_ptr<Object>(object)};
  const std::string_view name = foreign->TypeName();
  // Programs of other kinds have an object of that name as well.
  if (name == "Application" && foreign->Has("Worksheets")) return excel::LateBoundApplication(object);
  if (name == "Worksheet") return excel::As<host::excel::Worksheet>(value);
  if (name == "Chart") return excel::As<host::excel::Chart>(value);
  if (name == "Range") return excel::As<host::excel::Range>(value);
  return nullptr;
}

std::shared_ptr<com::Foreign> ForeignBehind(const Object& object) {
  const auto* const late = dynamic_cast<const excel::Late*>(&object);
  if (late == nullptr) return nullptr;
  const auto program_object = std::dynamic_pointer_cast<ProgramObject>(late->foreign());
  return program_object != nullptr ? program_object->foreign() : nullptr;
}

}  // namespace

void TakeSpreadsheetPrograms() { com::TakeForeignObjectsFor({MeaningOf, ForeignBehind}); }

}  // namespace mirelo::windows
