#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/cMirelo.h"
#include "core/mGlobal.h"
#include "diagnostics/CErrorHandler.h"
#include "host/host.h"
#include "support/answering_internet.h"
#include "support/error_number.h"
#include "support/faulty_registry.h"
#include "support/manual_clock.h"
#include "support/manual_loop.h"
#include "support/memory_registry.h"
#include "support/recording_system.h"
#include "support/scripted_desktop.h"
#include "support/test_host.h"

namespace mirelo::testing {

// A facade on a machine of which nothing is real, at 8:36:13 on 20 January 2011. Link mirelo and mirelo_poll.
class FacadeTest : public ::testing::Test {
 protected:
  FacadeTest() {
    host.Use(loop).Use(clock).Use(registry).Use(internet).Use(desktop).Use(system);
    facade.emplace();
  }

  static void Save(const char* key, Variant value) {
    mGlobal::AppSettings().SaveSetting("Settings", key, std::move(value));
  }

  // The answers that the user will give to the coming failure reports.
  void Answers(std::initializer_list<std::string> answers) {
    desktop.report_answers.assign(answers.begin(), answers.end());
  }

  // The numbers of the errors that were reported, in order.
  std::vector<int> ReportedErrors() const {
    constexpr std::string_view kMark = "\tError: ";
    std::vector<int> errors;
    for (const auto& report : desktop.reports) {
      errors.push_back(std::stoi(report.text.substr(report.text.find(kMark) + kMark.size())));
    }
    return errors;
  }

  ManualLoop loop;
  ManualClock clock;
  MemoryRegistry stored;
  FaultyRegistry registry{stored};
  AnsweringInternet internet;
  ScriptedDesktop desktop;
  RecordingSystem system;
  TestHost host;
  host::HostScope installed{host};
  std::optional<cMirelo> facade;
};

}  // namespace mirelo::testing
