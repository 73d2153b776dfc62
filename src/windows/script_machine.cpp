#include "adapters/windows/system.h"

#include "windows/script_machine.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "automation/wipe.h"
#include "automation_server/classes.h"
#include "automation_server/rows.h"
#include "com/class_ids.h"
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
};

automation_server::Class ScriptMachineClass() {
  using namespace automation_server;
  using Self = ScriptMachine;
  return Creatable<Self>(kName, {METHOD(Wait, "Milliseconds"), METHOD(StoreCredentials, "Name", "Secret")});
}

}  // namespace

void KnowScriptMachine() {
  if (automation_server::ClassNamed(kName) != nullptr) return;
  automation_server::AddClass(ScriptMachineClass());
  com::AddClassId(kName, kNumber);
}

}  // namespace mirelo::windows
