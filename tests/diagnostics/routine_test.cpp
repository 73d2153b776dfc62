#include <gmock/gmock.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "automation/variant.h"
#include "diagnostics/routine_fixture.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class RoutineFrame : public RoutineTest {};

TEST_F(RoutineFrame, PushesTheNameWithoutDataAndPopsWhenTold) {
  Routine("Mirelo.frmMirelo.ButAdd_Click", [&](Frame& frame) {
    ASSERT_EQ(handler().CallStack().size(), 1u);
    EXPECT_EQ(handler().CallStack()[0].procedure, "Mirelo.frmMirelo.ButAdd_Click");
    EXPECT_EQ(handler().CallStack()[0].data, "");
    frame.pop();
    EXPECT_THAT(handler().CallStack(), IsEmpty());
  });
}

TEST_F(RoutineFrame, LeavesTheNameOnTheStackWithoutAPop) {
  Routine("A", [](Frame&) {});
  EXPECT_EQ(handler().CallStack().size(), 1u);
}

TEST_F(RoutineFrame, ReportsAFailureInItsOwnName) {
  Answers({"IGNORE"});
  Routine("Mirelo.frmMirelo.ButAdd_Click", [&](Frame& frame) { STEP(FailsOn("a")); });
  ASSERT_EQ(desktop.reports.size(), 1u);
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tError: 13, (Type mismatch)\r\n"
                                                 "\tin Mirelo.frmMirelo.ButAdd_Click at line 0\r\n"));
}

TEST_F(RoutineFrame, RetriesExactlyTheStatementThatFailed) {
  Answers({"RETRY", "RETRY"});
  handler().CallStackPush("caller", "");
  Routine("A", [&](Frame& frame) {
    STEP(Did("before"));
    STEP(FailsTimes(2, "failing"));
    STEP(Did("behind"));
    frame.pop();
  });
  EXPECT_THAT(done, ElementsAre("before", "failing", "failing", "failing", "behind"));
  EXPECT_THAT(Procedures(handler()), ElementsAre("caller")) << "one pop, at the end";
}

TEST_F(RoutineFrame, GoesOnBehindAStatementThatIsIgnored) {
  Answers({"IGNORE"});
  handler().CallStackPush("caller", "");
  Routine("A", [&](Frame& frame) {
    STEP(FailsOn("failing"));
    STEP(Did("behind"));
    frame.pop();
  });
  EXPECT_THAT(done, ElementsAre("failing", "behind"));
  EXPECT_THAT(Procedures(handler()), ElementsAre("caller")) << "one pop, at the end";
}

TEST_F(RoutineFrame, LeavesTheRoutineAndClearsTheWholeStackOnAbort) {
  Answers({"ABORT"});
  handler().CallStackPush("caller", "");
  EXPECT_NO_THROW(Routine("A", [&](Frame& frame) {
    STEP(FailsOn("failing"));
    STEP(Did("behind"));
    frame.pop();
  }));
  EXPECT_THAT(done, ElementsAre("failing"));
  EXPECT_THAT(handler().CallStack(), IsEmpty());
}

TEST_F(RoutineFrame, LeavesItsEntriesBehindOnAbortWhileTheStackIsDisabled) {
  handler().CallStackEnabled(false);
  Answers({"ABORT"});
  handler().CallStackPush("caller", "");
  Routine("A", [&](Frame& frame) { STEP(FailsOn("failing")); });
  EXPECT_EQ(handler().CallStack().size(), 2u);
}

TEST_F(RoutineFrame, ReturnsTheDefaultOfItsTypeOnAbortWhateverItHadSet) {
  Answers({"ABORT", "ABORT"});
  const int number = Function("A", -1, [&](Frame& frame, int& value) {
    STEP(value = 5);
    STEP(FailsOn("failing"));
  });
  EXPECT_EQ(number, 0);
  const Variant variant =
      Function("A", Variant("started"), [&](Frame& frame, Variant&) { STEP(FailsOn("failing")); });
  EXPECT_TRUE(variant.IsEmpty());
}

TEST_F(RoutineFrame, ReturnsOnAbortWhatItNamesForThat) {
  Answers({"ABORT"});
  const int result = Function("A", -1, 7, [&](Frame& frame, int& value) {
    STEP(value = 5);
    STEP(FailsOn("failing"));
  });
  EXPECT_EQ(result, 7);
}

TEST_F(RoutineFrame, ReturnsWhatItHasSet) {
  EXPECT_EQ(Function("A", -1, [&](Frame& frame, int& value) { STEP(value = 5); }), 5);
  EXPECT_EQ(Function("A", -1, [&](Frame&, int&) {}), -1);
}

TEST_F(RoutineFrame, TakesTheBranchThatAConditionSays) {
  Routine("A", [&](Frame& frame) {
    EXPECT_TRUE(frame.test([] { return true; }));
    EXPECT_FALSE(frame.test([] { return false; }));
  });
}

TEST_F(RoutineFrame, RetriesACondition) {
  Answers({"RETRY"});
  Routine("A", [&](Frame& frame) {
    EXPECT_FALSE(frame.test([&] {
      FailsTimes(1, "condition");
      return false;
    }));
  });
  EXPECT_THAT(done, ElementsAre("condition", "condition"));
}

TEST_F(RoutineFrame, EntersTheBlockOfAConditionThatIsIgnored) {
  Answers({"IGNORE"});
  Routine("A", [&](Frame& frame) {
    EXPECT_TRUE(frame.test([&] {
      FailsOn("condition");
      return false;
    }));
  });
}

std::vector<std::int32_t> Counted(Bounds bounds) {
  std::vector<std::int32_t> counted;
  for (const std::int32_t i : bounds) counted.push_back(i);
  return counted;
}

TEST(LoopBounds, CountFromTheFirstToTheLast) {
  EXPECT_THAT(Counted({-1, 2}), ElementsAre(-1, 0, 1, 2));
  EXPECT_THAT(Counted({3, 3}), ElementsAre(3));
}

TEST(LoopBounds, CountNothingWhenTheLastLiesBelowTheFirst) {
  EXPECT_THAT(Counted({1, 0}), IsEmpty());
  EXPECT_THAT(Counted({5, -5}), IsEmpty());
}

TEST(LoopBounds, CountUpToTheHighestNumber) {
  constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
  EXPECT_THAT(Counted({kHighest - 1, kHighest}), ElementsAre(kHighest - 1, kHighest));
}

TEST_F(RoutineFrame, EvaluatesTheBoundsOfALoopOnceAndRetriesThem) {
  Answers({"RETRY"});
  Routine("A", [&](Frame& frame) {
    for (const std::int32_t i : frame.loop([&] {
           FailsTimes(1, "bounds");
           return Bounds{1, 2};
         })) {
      STEP(Did(std::to_string(i)));
    }
  });
  EXPECT_THAT(done, ElementsAre("bounds", "bounds", "1", "2"));
}

TEST_F(RoutineFrame, EntersALoopOnceWhoseBoundsAreIgnored) {
  Answers({"IGNORE"});
  Routine("A", [&](Frame& frame) {
    for (const std::int32_t i : frame.loop([&] {
           FailsOn("bounds");
           return Bounds{1, 2};
         })) {
      STEP(Did(std::to_string(i)));
    }
  });
  EXPECT_THAT(done, ElementsAre("bounds", "0"));
}

}  // namespace
}  // namespace mirelo::testing
