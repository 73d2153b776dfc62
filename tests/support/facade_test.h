#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
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
#include "support/temp_directory.h"
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

  // Of the failures that were reported, in order: the errors' numbers, the routines.
  std::vector<int> ReportedErrors() const {
    std::vector<int> errors;
    for (const std::string& number : FromReports("\tError: ", ",")) errors.push_back(std::stoi(number));
    return errors;
  }
  std::vector<std::string> ReportedRoutines() const { return FromReports("\tin ", " at line"); }

  // The routines that `act` enters and leaves: "Entered Mirelo.frmColor.Form_Load".
  static std::vector<std::string> Traces(const std::function<void()>& act) {
    const TempDirectory folder;
    const std::string file = (folder / "traces.txt").string();
    mGlobal::ErrorHandler().TracingLogFile(file);
    mGlobal::ErrorHandler().TracingEnabled(true);
    act();
    mGlobal::ErrorHandler().TracingEnabled(false);

    std::vector<std::string> traces;
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
      const auto event = line.find(" --- ") + 5;
      const auto routine = line.find(" routine: ") + 10;
      const std::string name = line.substr(routine, line.find('\r') - routine);
      traces.push_back(line.substr(event, line.find(' ', event) - event) + " " + name);
    }
    return traces;
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

 private:
  std::vector<std::string> FromReports(std::string_view before, std::string_view behind) const {
    std::vector<std::string> parts;
    for (const auto& report : desktop.reports) {
      const auto start = report.text.find(before) + before.size();
      parts.push_back(report.text.substr(start, report.text.find(behind, start) - start));
    }
    return parts;
  }
};

}  // namespace mirelo::testing
