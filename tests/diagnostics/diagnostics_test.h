#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "automation/runtime_error.h"
#include "diagnostics/CErrorHandler.h"
#include "host/host.h"
#include "support/error_number.h"
#include "support/manual_clock.h"
#include "support/recording_system.h"
#include "support/scripted_desktop.h"
#include "support/temp_directory.h"
#include "support/test_host.h"

namespace mirelo::testing {

// The machine that an error handler needs, at 8:36:13 on 20 January 2011.
class DiagnosticsTest : public ::testing::Test {
 protected:
  DiagnosticsTest() { host.Use(clock).Use(desktop).Use(system); }

  std::string PathOf(const char* name) const { return (directory / name).string(); }

  ManualClock clock;
  ScriptedDesktop desktop;
  RecordingSystem system;
  TestHost host;
  host::HostScope installed{host};
  TempDirectory directory;
};

// Lets the handler take a failure, as a routine's failure path does.
inline std::int32_t Handle(CErrorHandler& handler, const RuntimeError& failure,
                           std::string_view procedure = "") {
  try {
    throw failure;
  } catch (...) {
    return handler.HandleError(procedure);
  }
}

// The routines on the call stack, the outermost first.
inline std::vector<std::string> Procedures(const CErrorHandler& handler) {
  std::vector<std::string> procedures;
  for (const auto& entry : handler.CallStack()) procedures.push_back(entry.procedure);
  return procedures;
}

inline void ExpectComponentFailure(const RuntimeError& error) {
  ExpectError(error, 0x800443FC, "CErrorHandler component failure", "Mirelo.CErrorHandler");
}

inline std::string ContentsOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace mirelo::testing
