// Settings in the form of an export, from anywhere: they are refused with an error for people, or they
// survive being exported and imported again, and what is stored of them can be exported and imported too.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "automation/runtime_error.h"
#include "core/CAppSettings.h"
#include "core/settings_export.h"
#include "host/host.h"
#include "support/memory_registry.h"
#include "support/test_host.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

// What a new store holds after an import.
std::vector<mirelo::StoredSetting> Stored(const std::vector<mirelo::StoredSetting>& settings) {
  mirelo::testing::MemoryRegistry registry;
  mirelo::testing::TestHost host;
  host.Use(registry);
  const mirelo::host::HostScope scope(host);
  mirelo::CAppSettings store;
  store.Init("Kestrin", "Dovanta2");
  mirelo::WriteSettings(store, settings);
  return mirelo::ReadSettings(store);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  std::vector<mirelo::StoredSetting> settings;
  try {
    settings = mirelo::ParseSettings(text);
  } catch (const mirelo::RuntimeError& error) {
    Require(error.Number() == 5 && error.Description().starts_with("Line "));
    return 0;
  }
  const std::string exported = mirelo::ExportSettings(settings);
  const auto again = mirelo::ParseSettings(exported);
  Require(again == settings);
  Require(mirelo::ExportSettings(again) == exported);

  const auto stored = Stored(settings);
  // Keys that differ only in what the code page does not have are one value.
  Require(stored.size() <= settings.size() && stored.empty() == settings.empty());
  Require(Stored(mirelo::ParseSettings(mirelo::ExportSettings(stored))) == stored);
  return 0;
}
