#include <gmock/gmock.h>

#include <cstdint>
#include <string>

#include "diagnostics/routine_fixture.h"
#include "diagnostics/skipping_frame.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class SkippedFailures : public RoutineTest {};

TEST_F(SkippedFailures, GoOnWithTheNextStatementAndTellNobody) {
  SkippingFailures([&](SkippingFrame& frame) {
    STEP(Did("before"));
    STEP(FailsOn("failing"));
    STEP(throw 5);
    STEP(Did("behind"));
  });
  EXPECT_THAT(done, ElementsAre("before", "failing", "behind"));
  EXPECT_THAT(desktop.reports, IsEmpty());
}

TEST_F(SkippedFailures, RunEachStatementOnce) {
  Answers({"RETRY", "RETRY"});
  SkippingFailures([&](SkippingFrame& frame) { STEP(FailsTimes(1, "failing")); });
  EXPECT_THAT(done, ElementsAre("failing"));
}

TEST_F(SkippedFailures, HaveNoPlaceOnTheCallStack) {
  handler().CallStackPush("caller", "");
  SkippingFailures([&](SkippingFrame& frame) {
    STEP(EXPECT_THAT(Procedures(handler()), ElementsAre("caller")));
    STEP(FailsOn("failing"));
  });
  EXPECT_THAT(Procedures(handler()), ElementsAre("caller"));
}

TEST_F(SkippedFailures, NeedNobodyWhoHandlesErrors) {
  mGlobal::SetErrorHandler(nullptr);
  EXPECT_NO_THROW(SkippingFailures([&](SkippingFrame& frame) {
    STEP(FailsOn("failing"));
    STEP(Did("behind"));
  }));
  EXPECT_THAT(done, ElementsAre("failing", "behind"));
}

TEST_F(SkippedFailures, TakeTheBranchThatAConditionSaysAndEnterItWhenThatFails) {
  SkippingFailures([&](SkippingFrame& frame) {
    EXPECT_TRUE(frame.test([] { return true; }));
    EXPECT_FALSE(frame.test([] { return false; }));
    EXPECT_TRUE(frame.test([&] {
      FailsOn("condition");
      return false;
    }));
  });
  EXPECT_THAT(done, ElementsAre("condition"));
}

// A routine that reports stands on its own, wherever it is called from.
TEST_F(SkippedFailures, LeaveTheReportsOfRoutinesThatTheyCallAlone) {
  Answers({"ABORT", "RETRY"});
  SkippingFailures([&](SkippingFrame& skipping) {
    for (int call = 0; call < 2; ++call) {
      skipping.step([&] {
        Routine("called", [&](Frame& frame) {
          STEP(FailsTimes(2, "failing"));
          STEP(Did("behind"));
        });
      });
    }
  });
  EXPECT_THAT(done, ElementsAre("failing", "failing", "failing", "behind"));
  EXPECT_THAT(desktop.reports, SizeIs(2));
}

TEST_F(SkippedFailures, SwallowAnErrorOfTheErrorHandlerToo) {
  handler().ErrorHandlerActions(CErrorHandler::ActionLogFile);
  handler().ErrorLogFile(PathOf("no such folder/errors.txt"));
  EXPECT_NO_THROW(SkippingFailures([&](SkippingFrame& skipping) {
    skipping.step([&] { Routine("called", [&](Frame& frame) { STEP(FailsOn("failing")); }); });
    skipping.step([&] { Did("behind"); });
  }));
  EXPECT_THAT(done, ElementsAre("failing", "behind"));
}

class IgnoringFrame : public RoutineTest {};

TEST_F(IgnoringFrame, SkipsWhatFailsFromThereOnWithoutAsking) {
  Answers({"RETRY", "ABORT"});
  Routine("A", [&](Frame& frame) {
    STEP(FailsTimes(1, "asked"));
    frame.ignore_failures();
    STEP(FailsOn("first"));
    STEP(FailsOn("second"));
    STEP(Did("behind"));
    frame.pop();
  });
  EXPECT_THAT(done, ElementsAre("asked", "asked", "first", "second", "behind"));
  EXPECT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(handler().CallStack(), IsEmpty());
}

TEST_F(IgnoringFrame, AsksAgainFromWhereFailuresAreReported) {
  Answers({"IGNORE", "ABORT"});
  Routine("A", [&](Frame& frame) {
    frame.ignore_failures();
    STEP(FailsOn("skipped"));
    frame.report_failures();
    STEP(FailsOn("ignored"));
    STEP(FailsOn("aborted"));
    STEP(Did("never"));
  });
  EXPECT_THAT(done, ElementsAre("skipped", "ignored", "aborted"));
  EXPECT_THAT(desktop.reports, SizeIs(2));
}

TEST_F(IgnoringFrame, EntersBlocksAndLoopsWhoseHeadFails) {
  Routine("A", [&](Frame& frame) {
    frame.ignore_failures();
    EXPECT_TRUE(frame.test([&] {
      FailsOn("condition");
      return false;
    }));
    for (const std::int32_t i : frame.loop([&] {
           FailsOn("bounds");
           return Bounds{1, 2};
         })) {
      STEP(Did(std::to_string(i)));
    }
  });
  EXPECT_THAT(done, ElementsAre("condition", "bounds", "0"));
  EXPECT_THAT(desktop.reports, IsEmpty());
}

TEST_F(IgnoringFrame, LeavesRoutinesThatItCallsToAskForThemselves) {
  Answers({"IGNORE"});
  Routine("outer", [&](Frame& outer) {
    outer.ignore_failures();
    outer.step([&] {
      Routine("inner", [&](Frame& frame) {
        STEP(FailsOn("inner"));
        STEP(Did("inner goes on"));
      });
    });
  });
  EXPECT_THAT(done, ElementsAre("inner", "inner goes on"));
  EXPECT_THAT(desktop.reports, SizeIs(1));
}

TEST_F(IgnoringFrame, SkipsAPopThatFails) {
  handler().TracingFlags(CErrorHandler::TraceLogFile);
  Routine("A", [&](Frame& frame) {
    frame.ignore_failures();
    handler().TracingEnabled(true);
    handler().TracingLogFile(PathOf("no such folder/traces.txt"));
    frame.pop();
    Did("behind");
  });
  EXPECT_THAT(done, ElementsAre("behind"));
  EXPECT_THAT(Procedures(handler()), ElementsAre("A")) << "the line comes first, so the entry stays";
}

}  // namespace
}  // namespace mirelo::testing
