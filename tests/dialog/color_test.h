#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "dialog/frmColor.h"
#include "support/facade_test.h"
#include "support/temp_directory.h"

namespace mirelo::testing {

// What the tests of the palette and of the buttons that open it look at.
class ColorTest : public FacadeTest {
 protected:
  // The routines that `act` enters and leaves: "Entered Mirelo.frmColor.Form_Load".
  std::vector<std::string> Traces(const std::function<void()>& act) {
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

  // Of the failures that were reported, in order: the routine, the error's number.
  std::vector<std::string> ReportedRoutines() const { return FromReports("\tin ", " at line"); }
  std::vector<std::int32_t> ReportedErrors() const {
    std::vector<std::int32_t> errors;
    for (const std::string& number : FromReports("\tError: ", ",")) errors.push_back(std::stoi(number));
    return errors;
  }

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
