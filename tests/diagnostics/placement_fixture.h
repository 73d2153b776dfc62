#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <utility>

#include "core/CAppSettings.h"
#include "diagnostics/CFormRestore.h"
#include "forms/form.h"
#include "host/host.h"
#include "support/faulty_registry.h"
#include "support/memory_registry.h"
#include "support/scripted_desktop.h"
#include "support/test_host.h"

namespace mirelo::host {

inline void PrintTo(const WindowPlacement& placement, std::ostream* out) {
  const WindowRectangle& normal = placement.normal;
  *out << "state " << placement.state << " min " << placement.min_x << "," << placement.min_y << " max "
       << placement.max_x << "," << placement.max_y << " normal " << normal.left << "," << normal.top << ".."
       << normal.right << "," << normal.bottom;
}

}  // namespace mirelo::host

namespace mirelo::testing {

constexpr std::int32_t kFormWidth = 200;  // pixels
constexpr std::int32_t kFormHeight = 100;

class PlacedForm : public forms::Form {
 public:
  explicit PlacedForm(Border border = Border::Sizable) : Form("frmPlaced", "Placed") {
    Design(kFormWidth * host::kTwipsPerPixel, kFormHeight * host::kTwipsPerPixel, border);
  }
};

// A form, a desktop that knows places, and a store of settings.
class PlacementTest : public ::testing::Test {
 protected:
  static constexpr const char* kSection = "Windows settings\\frmPlaced";

  PlacementTest() {
    settings.Init("Kestrin", "Dovanta2");
    restore.Init(&settings, false);
  }

  void Save(const char* key, Variant value) { settings.SaveSetting(kSection, key, std::move(value)); }
  // The nine values of a place.
  void SavePlace(const host::WindowPlacement& place) {
    Save("WindowState", place.state);
    Save("MinPosX", place.min_x);
    Save("MinPosY", place.min_y);
    Save("MaxPosX", place.max_x);
    Save("MaxPosY", place.max_y);
    Save("NormalPosLeft", place.normal.left);
    Save("NormalPosTop", place.normal.top);
    Save("NormalPosRight", place.normal.right);
    Save("NormalPosBottom", place.normal.bottom);
  }

  // Where the desktop has the form; nothing when nobody put it anywhere.
  std::optional<host::WindowPlacement> Place() { return desktop.GetWindowPlacement(form); }

  MemoryRegistry memory;
  FaultyRegistry registry{memory};
  ScriptedDesktop desktop;
  TestHost host = TestHost().Use(registry).Use(desktop);
  host::HostScope installed{host};
  CAppSettings settings;
  CFormRestore restore;
  PlacedForm form;
};

}  // namespace mirelo::testing
