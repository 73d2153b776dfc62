#include <memory>
#include <string>
#include <vector>

#include "automation/runtime_error.h"
#include "dialog/dialog_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// LoadFrmMirelo, from the macros' side.
class Showing : public DialogTest {
 protected:
  std::int32_t ShowUntilHiddenWithTag(const std::string& tag) {
    return Show([&](frmMirelo& form) {
      form.Hide();
      form.Tag(tag);
    });
  }
};

TEST_F(Showing, AnswersWhatTheTagSays) {
  const struct {
    const char* tag;
    std::int32_t result;
  } cases[] = {{"77", 77}, {"78", 78}, {"2", 2},   {"", 2},      {"79", 2},
               {"0", 2},   {"-77", 2}, {"abc", 2}, {"77.0", 77}, {" 78", 78}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.tag);
    EXPECT_EQ(ShowUntilHiddenWithTag(c.tag), c.result);
    EXPECT_THAT(CallStack(), IsEmpty());
  }
}

TEST_F(Showing, AnswersTwoForADialogThatIsClosedByItsCloseBox) {
  EXPECT_EQ(Show([](frmMirelo& form) { form.Close(); }), 2);
  EXPECT_THAT(CallStack(), IsEmpty());
}

TEST_F(Showing, ShowsOneModalFormWithTheFacadesSettings) {
  Show([](frmMirelo& form) {
    EXPECT_EQ(forms::ActiveForm(), &form);
    EXPECT_TRUE(form.Visible());
    EXPECT_EQ(form.frmAppSettings(), &mGlobal::AppSettings());
    EXPECT_THAT(CallStack(), ElementsAre("Mirelo.cMirelo.LoadFrmMirelo"));
  });
  EXPECT_THAT(desktop.forms, ElementsAre("frmMirelo"));
  EXPECT_EQ(forms::ActiveForm(), nullptr);
}

TEST_F(Showing, MakesTheDialogAnewEachTimeAndKeepsNone) {
  const auto alive = std::make_shared<int>();
  for (int i = 0; i < 2; ++i) {
    Show([&](frmMirelo& form) {
      form.Appearance.Subscribe([alive] {});
      EXPECT_EQ(alive.use_count(), 2);
      EXPECT_EQ(form.txtTicker.Text(), "");
      form.txtTicker.UserEdit("typed");
    });
    EXPECT_EQ(alive.use_count(), 1);
  }
}

TEST_F(Showing, DropsTheDialogBeforeItLeavesTheRoutine) {
  std::vector<std::string> stack_at_the_end;
  Show([&](frmMirelo& form) {
    const std::shared_ptr<void> end(nullptr, [&](void*) { stack_at_the_end = CallStack(); });
    form.Appearance.Subscribe([end] {});
  });
  EXPECT_THAT(stack_at_the_end, ElementsAre("Mirelo.cMirelo.LoadFrmMirelo"));
  EXPECT_THAT(CallStack(), IsEmpty());
}

TEST_F(Showing, ShowsTheDialogAgainOnRetry) {
  Answers({"RETRY"});
  int shows = 0;
  EXPECT_EQ(Show([&](frmMirelo& form) {
              if (++shows == 1) throw Errors::OutOfMemory();
              form.Hide();
              form.Tag("78");
            }),
            78);
  EXPECT_EQ(shows, 2);
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tError: 7, (Out of memory)\r\n"
                                                 "\tin Mirelo.cMirelo.LoadFrmMirelo at line 0\r\n"));
}

TEST_F(Showing, TakesTheTagOfADialogWhoseFailureIsIgnored) {
  Answers({"IGNORE"});
  EXPECT_EQ(Show([](frmMirelo& form) {
              form.Tag("78");
              throw Errors::OutOfMemory();
            }),
            78);
  EXPECT_THAT(CallStack(), IsEmpty());
}

TEST_F(Showing, AnswersZeroWhenAFailureOfTheDialogIsAborted) {
  Answers({"ABORT"});
  const auto alive = std::make_shared<int>();
  EXPECT_EQ(Show([&](frmMirelo& form) {
              form.Appearance.Subscribe([alive] {});
              form.Tag("78");
              throw Errors::OutOfMemory();
            }),
            0);
  EXPECT_EQ(alive.use_count(), 1);
  EXPECT_THAT(CallStack(), IsEmpty());
}

TEST_F(Showing, ReportsASettingsStoreThatIsGone) {
  Answers({"ABORT"});
  mGlobal::SetAppSettings(nullptr);
  EXPECT_EQ(Show(), 0);
  EXPECT_THAT(desktop.forms, IsEmpty());
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tError: 91, "));
}

}  // namespace
}  // namespace mirelo::testing
