#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "automation_server/automation_object.h"
#include "automation_server/classes.h"
#include "support/answering_internet.h"
#include "support/error_number.h"
#include "support/faulty_registry.h"
#include "support/level1_wire.h"
#include "support/manual_clock.h"
#include "support/manual_loop.h"
#include "support/memory_registry.h"
#include "support/memory_vault.h"
#include "support/memory_winsock.h"
#include "support/recording_system.h"
#include "support/scripted_desktop.h"
#include "support/test_host.h"

namespace mirelo::testing {

// An automation client on a machine of which nothing is real. It knows objects as clients know them, by their
// doors and the names of their members.
class ServerTest : public ::testing::Test {
 protected:
  using Door = std::shared_ptr<automation_server::AutomationObject>;
  using Arguments = automation_server::Arguments;

  ServerTest() {
    host.Use(loop).Use(clock).Use(registry).Use(internet).Use(sockets).Use(desktop).Use(system).Use(vault);
  }

  static Door New(std::string_view name) { return DoorOf(automation_server::CreateObject(name)); }
  static Door DoorOf(const Variant& value) {
    return automation_server::AutomationObject::Of(value.AsObject());
  }
  // The object itself, as it is handed to a member.
  static Variant ObjectOf(const Door& door) { return door->object(); }
  static Variant Nothing() { return std::shared_ptr<Object>(); }

  static Variant Get(const Door& door, std::string_view name, Arguments arguments = {}) {
    return door->Get(door->IdOf(name), std::move(arguments));
  }
  static void Let(const Door& door, std::string_view name, const Variant& value, Arguments arguments = {}) {
    door->Let(door->IdOf(name), value, std::move(arguments));
  }
  static void Set(const Door& door, std::string_view name, const Variant& value, Arguments arguments = {}) {
    door->Set(door->IdOf(name), value, std::move(arguments));
  }
  static Variant Call(const Door& door, std::string_view name, Arguments arguments = {}) {
    return door->Call(door->IdOf(name), arguments);
  }
  // With arguments that the member may change.
  static Variant CallChanging(const Door& door, std::string_view name, Arguments& arguments) {
    return door->Call(door->IdOf(name), arguments);
  }

  // Where an argument was left out.
  static std::nullopt_t LeftOut() { return std::nullopt; }

  ManualLoop loop;
  ManualClock clock;
  MemoryRegistry stored;
  FaultyRegistry registry{stored};
  AnsweringInternet internet;
  MemoryWinsock sockets;
  ScriptedDesktop desktop;
  RecordingSystem system;
  MemoryVault vault;
  TestHost host;
  host::HostScope installed{host};
};

}  // namespace mirelo::testing
