// What is particular to a spreadsheet that is called by the names of its members.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/excel/foreign_object.h"
#include "adapters/excel/late_application.h"
#include "adapters/workbook/spreadsheet.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "host/excel/application.h"
#include "host/excel/chart.h"
#include "host/excel/charts.h"
#include "host/excel/range.h"
#include "late_bound.h"
#include "support/error_number.h"

namespace mirelo::testing {
namespace {

// A program that answers each member with the same, or with an error.
class ScriptedProgram : public excel::ForeignObject {
 public:
  std::string_view TypeName() const override { return "Application"; }
  Variant Get(std::string_view member, std::vector<Variant> arguments) override {
    calls.push_back(std::string(member) + "/" + std::to_string(arguments.size()));
    if (failure) throw *failure;
    return answer;
  }
  void Let(std::string_view member, const Variant& value, std::vector<Variant>) override {
    calls.push_back(std::string(member) + " = " + value.ToText());
  }

  Variant answer;
  std::unique_ptr<RuntimeError> failure;
  std::vector<std::string> calls;
};

class LateBound : public ::testing::Test {
 protected:
  std::shared_ptr<ScriptedProgram> program = std::make_shared<ScriptedProgram>();
  std::shared_ptr<host::excel::Application> application = excel::LateBoundApplication(program);
};

TEST_F(LateBound, CallsMembersByTheirNames) {
  application->ScreenUpdating(false);
  application->ActiveCell();
  application->Cells(2, 3);
  EXPECT_EQ(program->calls, (std::vector<std::string>{"ScreenUpdating = False", "ActiveCell/0", "Cells/2"}));
}

TEST_F(LateBound, IsNothingForNothing) {
  EXPECT_EQ(excel::LateBoundApplication(nullptr), nullptr);
  EXPECT_EQ(application->ActiveWorkbook(), nullptr) << "an empty answer";
  program->answer = std::shared_ptr<Object>();
  EXPECT_EQ(application->ActiveWorkbook(), nullptr);
  EXPECT_EQ(application->Selection(), nullptr);
  EXPECT_EQ(application->ActiveSheet(), nullptr);
}

TEST_F(LateBound, RaisesWhatTheProgramRaises) {
  program->failure = std::make_unique<RuntimeError>(1004, "cells are being edited", "Program");
  const RuntimeError error = ErrorOf([&] { application->ActiveWorkbook(); });
  EXPECT_EQ(error.Number(), 1004);
  EXPECT_EQ(error.Source(), "Program");
}

TEST_F(LateBound, RefusesAnswersThatAreNoObjectsOfTheProgram) {
  program->answer = 5;
  EXPECT_EQ(NumberOf([&] { application->ActiveWorkbook(); }), 424);
  program->answer = application;
  EXPECT_EQ(NumberOf([&] { application->ActiveWorkbook(); }), 13);
  program->answer = "often";
  EXPECT_EQ(NumberOf([&] { application->ScreenUpdating(); }), 13);
}

TEST(LateBoundWorkbook, TakesNoCellsOfAnotherSpreadsheet) {
  const auto here = CalledByNames(workbook::Spreadsheet::New().Application());
  const auto elsewhere = workbook::Spreadsheet::New().Application();
  const auto chart = here->Charts()->Add();
  EXPECT_EQ(NumberOf([&] { chart->SetSourceData(*elsewhere->Range("A1:A2"), host::excel::xlColumns); }), 13);
}

}  // namespace
}  // namespace mirelo::testing
