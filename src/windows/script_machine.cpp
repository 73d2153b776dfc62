#include "adapters/windows/system.h"

#include "windows/script_machine.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "automation/runtime_error.h"
#include "automation_server/classes.h"
#include "automation_server/rows.h"
#include "com/class_ids.h"
#include "forms/form.h"
#include "person/script_person.h"
#include "windows/machine.h"

namespace mirelo::windows {

namespace {

constexpr const char* kName = "cMachine";
constexpr unsigned char kNumber = 64;  // those of the classes come before

class ScriptMachine : public Object {
 public:
  std::string_view TypeName() const override { return kName; }

  void Wait(std::int32_t milliseconds) {
    host::MessageLoop& loop = Machine::Installed().loop();
    bool is_over = false;
    const auto timer =
        loop.StartTimer(std::chrono::milliseconds(std::max(milliseconds, 0)), [&] { is_over = true; });
    try {
      loop.RunUntil([&] { return is_over; });
    } catch (...) {
      loop.StopTimer(timer);
      throw;
    }
  }

  void StoreCredentials(const std::string& name, const std::string& secret) {
    Machine::Installed().vault().Set(name, secret);
  }

  bool Attended() const { return !Machine::Installed().stands_in(); }
  void Attended(bool attended) {
    if (attended == Attended()) return;
    if (forms::ActiveForm() != nullptr)
      throw RuntimeError(5, "Attended cannot change while a dialog is open");
    auto& stands_in = Machine::Installed().stands_in();
    if (attended) {
      stands_in.reset();
    } else {
      stands_in.emplace();
    }
  }

  void Wish(const std::string& name, const std::string& value) { StandsIn().Wish(name, value); }
  std::string Told() { return StandsIn().Told(); }

 private:
  static ScriptPerson& StandsIn() {
    auto& stands_in = Machine::Installed().stands_in();
    if (!stands_in) throw RuntimeError(5, "Somebody is at the screen until Attended is False");
    return *stands_in;
  }
};

automation_server::Class ScriptMachineClass() {
  using namespace automation_server;
  using Self = ScriptMachine;
  return Creatable<Self>(kName, {METHOD(Wait, "Milliseconds"), METHOD(StoreCredentials, "Name", "Secret"),
                                 GET_LET(Attended), METHOD(Wish, "Name", "Value"), METHOD(Told)});
}

}  // namespace

void KnowScriptMachine() {
  if (automation_server::ClassNamed(kName) != nullptr) return;
  automation_server::AddClass(ScriptMachineClass());
  com::AddClassId(kName, kNumber);
}

}  // namespace mirelo::windows
