#include "adapters/windows/system.h"

#include "windows/machine.h"

#include "automation/runtime_error.h"

namespace mirelo::windows {

namespace {

// What is called by messages must not be gone before the messages are.
void KeepThisLibrary() {
  HMODULE kept = nullptr;
  ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<const wchar_t*>(&KeepThisLibrary), &kept);
}

}  // namespace

Machine& Machine::Installed() {
  static Machine& machine = *new Machine;
  return machine;
}

Machine::Machine() { KeepThisLibrary(); }

// What fails outside of every call of a client, such as a handler of its own in which it caught no error.
void Machine::TakeFailure(const std::exception_ptr& failure) {
  try {
    std::rethrow_exception(failure);
  } catch (...) {
    system_.LogEvent("Mirelo: " + CurrentError().Description(), host::OperatingSystem::kEventError);
  }
}

}  // namespace mirelo::windows
