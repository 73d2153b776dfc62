// Settings in the form of an export, from anywhere: they are refused with an error for people, or they
// survive being exported and imported again.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "automation/runtime_error.h"
#include "core/settings_export.h"

namespace {

void Require(bool holds) {
  if (!holds) std::abort();
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
  return 0;
}
