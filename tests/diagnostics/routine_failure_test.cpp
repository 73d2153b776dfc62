#include <gmock/gmock.h>

#include <stdexcept>
#include <string>

#include "diagnostics/routine_fixture.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// Failures of routines within routines, and of the error handler itself.
class RoutineFailure : public RoutineTest {
 protected:
  void TraceToNowhere() {
    handler().Init(CErrorHandler::ActionErrorForm, PathOf("errors.txt"), true, true, 2,
                   PathOf("no such folder/traces.txt"));
  }
  void TraceToFile() { handler().TracingLogFile(PathOf("traces.txt")); }
  // Reports cannot be written from now on, until the next Init.
  void LogToNowhere() {
    handler().ErrorHandlerActions(CErrorHandler::ActionErrorForm + CErrorHandler::ActionLogFile);
    handler().ErrorLogFile(PathOf("no such folder/errors.txt"));
  }
};

TEST_F(RoutineFailure, AbortedInsideLeavesTheOuterRoutineRunning) {
  Answers({"ABORT"});
  Routine("outer", [&](Frame& outer) {
    outer.step([&] {
      Routine("inner", [&](Frame& frame) {
        STEP(FailsOn("inner"));
        STEP(Did("never"));
      });
    });
    EXPECT_THAT(handler().CallStack(), IsEmpty());
    outer.step([&] { Did("outer goes on"); });
    outer.step([&] {
      Routine("another", [&](Frame& frame) {
        EXPECT_EQ(handler().CallStack().back().procedure, "another");
        frame.pop();
      });
    });
    outer.pop();
  });
  EXPECT_THAT(done, ElementsAre("inner", "outer goes on"));
  EXPECT_THAT(handler().CallStack(), IsEmpty());
  EXPECT_THAT(desktop.reports, SizeIs(1));
}

TEST_F(RoutineFailure, AbortedInsideAStatementOfTheSameRoutineAsksOnce) {
  Answers({"ABORT", "IGNORE"});
  Routine("A", [&](Frame& frame) {
    STEP(frame.step([&] { FailsOn("inner statement"); }));
    STEP(Did("never"));
  });
  EXPECT_THAT(done, ElementsAre("inner statement"));
  EXPECT_THAT(desktop.reports, SizeIs(1));
}

TEST_F(RoutineFailure, WithoutAFrameCountsAsTheCallersStatement) {
  Answers({"RETRY", "IGNORE"});
  const auto unframed = [&] {
    Did("one");
    FailsOn("two");
  };
  Routine("outer", [&](Frame& frame) {
    STEP(unframed());
    STEP(Did("three"));
  });
  EXPECT_THAT(done, ElementsAre("one", "two", "one", "two", "three"));
}

TEST_F(RoutineFailure, OfAnyKindIsReported) {
  Answers({"IGNORE"});
  Routine("A", [&](Frame& frame) { STEP(throw std::logic_error("odd")); });
  EXPECT_EQ(handler().ErrorDescription(), "odd");
  EXPECT_EQ(handler().ErrorNumber(), 440);
}

TEST_F(RoutineFailure, OfTheTraceLineAtItsHeadIsReportedByTheRoutineItself) {
  TraceToNowhere();
  Answers({"IGNORE"});
  Routine("A", [&](Frame& frame) {
    TraceToFile();
    STEP(Did("body"));
    frame.pop();
  });
  EXPECT_THAT(done, ElementsAre("body"));
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tError: -2147204100, (CErrorHandler component failure)\r\n"
                                                 "\tin A at line 0\r\n"));
  EXPECT_THAT(handler().CallStack(), IsEmpty());
}

TEST_F(RoutineFailure, OfTheTraceLineAtItsHeadAbortsTheRoutine) {
  TraceToNowhere();
  Answers({"ABORT"});
  const int result = Function("A", 7, [&](Frame& frame, int& value) { STEP(value = 8); });
  EXPECT_EQ(result, 0);
  EXPECT_THAT(handler().CallStack(), IsEmpty());
}

// The entry stands although its line could not be written, so that a retried push leaves two.
TEST_F(RoutineFailure, OfTheTraceLineAtItsHeadPushesAnewOnRetry) {
  TraceToNowhere();
  Answers({"RETRY"});
  desktop.while_open = [&] { TraceToFile(); };
  Routine("A", [&](Frame&) { EXPECT_THAT(handler().CallStack(), SizeIs(2)); });
}

TEST_F(RoutineFailure, OfTheErrorHandlerIsReportedByTheNextRoutineUp) {
  Answers({"RETRY", "IGNORE"});  // the first dialog breaks before its answer counts
  desktop.while_open = [&] {
    if (desktop.reports.size() == 1) throw Errors::OutOfMemory();
  };
  Routine("outer", [&](Frame& outer) {
    outer.step([&] {
      Routine("inner", [&](Frame& frame) {
        STEP(FailsOn("inner"));
        STEP(Did("never"));
      });
    });
    outer.step([&] { Did("outer goes on"); });
  });
  EXPECT_THAT(done, ElementsAre("inner", "outer goes on"));
  ASSERT_THAT(desktop.reports, SizeIs(2));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tError: 13, (Type mismatch)\r\n"));
  // The inner routine was not left by a pop, so it still is the innermost one.
  EXPECT_THAT(desktop.reports[1].text, HasSubstr("\tError: -2147204100, (CErrorHandler component failure)\r\n"
                                                 "\tin inner at line 0\r\n"));
}

TEST_F(RoutineFailure, OfTheErrorHandlerLeavesTheOutermostRoutineAsAnError) {
  LogToNowhere();
  handler().CallStackPush("caller", "");
  ExpectComponentFailure(ErrorOf([&] { Routine("A", [&](Frame& frame) { STEP(FailsOn("a")); }); }));
  EXPECT_THAT(desktop.reports, IsEmpty());
  EXPECT_THAT(Procedures(handler()), ElementsAre("caller", "A")) << "no pop on the way out";
}

TEST_F(RoutineFailure, OfTheErrorHandlerPassesTheOtherStatementsOfItsRoutine) {
  LogToNowhere();
  ExpectComponentFailure(ErrorOf([&] {
    Routine("A", [&](Frame& frame) {
      STEP(frame.step([&] { FailsOn("inner statement"); }));
      STEP(Did("never"));
    });
  }));
  EXPECT_THAT(done, ElementsAre("inner statement"));
}

TEST_F(RoutineFailure, IsAnErrorWhileNobodyHandlesErrors) {
  mGlobal::SetErrorHandler(nullptr);
  EXPECT_EQ(NumberOf([&] { Routine("A", [&](Frame&) { Did("never"); }); }), 91);
  EXPECT_THAT(done, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
