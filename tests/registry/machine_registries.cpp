#include "adapters/windows/system.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "adapters/windows/machine_registry.h"
#include "registry/tested_registries.h"
#include "support/faulty_registry.h"
#include "support/memory_registry.h"

namespace mirelo::testing {

namespace {

class InMemory : public TestedRegistry {
 public:
  Registry& registry() override { return registry_; }

 private:
  MemoryRegistry registry_;
};

class Faultless : public TestedRegistry {
 public:
  Registry& registry() override { return registry_; }

 private:
  MemoryRegistry inner_;
  FaultyRegistry registry_{inner_};
};

// The machine's own, whose roots are led aside for as long: to keys that this process makes and removes.
class OfTheMachine : public TestedRegistry {
 public:
  OfTheMachine() {
    for (const Root& root : kRoots) {
      HKEY aside = nullptr;
      ::RegCreateKeyExW(HKEY_CURRENT_USER, (Folder() + root.name).c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                        nullptr, &aside, nullptr);
      asides_[static_cast<std::size_t>(&root - kRoots.data())] = aside;
    }
    for (std::size_t i = 0; i < kRoots.size(); ++i) ::RegOverridePredefKey(kRoots[i].key(), asides_[i]);
  }
  ~OfTheMachine() override {
    for (const Root& root : kRoots) ::RegOverridePredefKey(root.key(), nullptr);
    for (const HKEY aside : asides_) ::RegCloseKey(aside);
    ::RegDeleteTreeW(HKEY_CURRENT_USER, Folder().substr(0, Folder().size() - 1).c_str());
  }
  Registry& registry() override { return registry_; }

 private:
  struct Root {
    HKEY (*key)();
    const wchar_t* name;
  };
  static constexpr std::array kRoots{
      Root{[] { return HKEY_CLASSES_ROOT; }, L"Classes"}, Root{[] { return HKEY_CURRENT_USER; }, L"User"},
      Root{[] { return HKEY_LOCAL_MACHINE; }, L"Machine"}, Root{[] { return HKEY_USERS; }, L"Users"}};

  static std::wstring Folder() {
    return L"Software\\Mirelo.Tests." + std::to_wstring(::GetCurrentProcessId()) + L"\\";
  }

  std::array<HKEY, 4> asides_{};
  windows::MachineRegistry registry_;
};

template <class Kind>
std::unique_ptr<TestedRegistry> Make() {
  return std::make_unique<Kind>();
}

}  // namespace

const std::vector<RegistryKind>& RegistryKinds() {
  static const std::vector<RegistryKind> kinds{
      {"Memory", Make<InMemory>}, {"FaultyWithoutFaults", Make<Faultless>}, {"Machine", Make<OfTheMachine>}};
  return kinds;
}

}  // namespace mirelo::testing
