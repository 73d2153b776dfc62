#include "adapters/sqlite/sqlite_registry.h"
#include "diagnostics/placement_fixture.h"
#include "support/temp_directory.h"

namespace mirelo::testing {
namespace {

constexpr host::WindowPlacement kStoredPlace{3, -1, -2, 30, 40, {-50, 60, 700, 800}};

class StoredPosition : public PlacementTest {};

TEST_F(StoredPosition, IsReadBackByAnotherRun) {
  const TempDirectory folder;
  const auto file = folder / "registry.db";
  {
    sqlite::SqliteRegistry first_run(file);
    desktop.placements["frmPlaced"] = kStoredPlace;
    TestHost machine = TestHost().Use(first_run).Use(desktop);
    const host::HostScope scope(machine);
    restore.SavePosition(form);
  }
  sqlite::SqliteRegistry second_run(file);
  ScriptedDesktop fresh_desktop;
  TestHost machine = TestHost().Use(second_run).Use(fresh_desktop);
  const host::HostScope scope(machine);
  CAppSettings fresh_settings;
  fresh_settings.Init("Kestrin", "Dovanta2");
  CFormRestore fresh_restore;
  fresh_restore.Init(&fresh_settings, true);
  PlacedForm fresh_form;
  fresh_restore.GetPosition(fresh_form);
  EXPECT_EQ(fresh_desktop.GetWindowPlacement(fresh_form), kStoredPlace);
  EXPECT_EQ(fresh_form.WindowState(), forms::Form::State::Maximized);
}

}  // namespace
}  // namespace mirelo::testing
