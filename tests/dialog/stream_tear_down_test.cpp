#include "automation/runtime_error.h"
#include "dialog/dialog_test.h"
#include "streaming/cQTStreaming.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;

// The stream that an update of the quote sources has made ends with the dialog.
class StreamTearDown : public DialogTest {
 protected:
  struct Ending {
    const char* name;
    std::function<void(frmMirelo&)> act;
  };
  const Ending endings[3] = {
      {"Close", [](frmMirelo& form) { form.ButClose.UserPress(); }},
      {"Cancel", [](frmMirelo& form) { form.ButCancel.UserPress(); }},
      {"close box", [](frmMirelo& form) { form.Close(); }},
  };

  static void Update(frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kSettings);
    form.txtSec.UserEdit("0");
    form.ButUpDate.UserPress();
  }
};

TEST_F(StreamTearDown, ClosesTheConnectionAndForgetsTheStream) {
  for (const Ending& ending : endings) {
    SCOPED_TRACE(ending.name);
    Show([&](frmMirelo& form) {
      Update(form);
      const std::weak_ptr<cQTStreaming> stream = mGlobal::StreamingObject();
      ASSERT_FALSE(stream.expired());
      sockets.calls.clear();
      ending.act(form);
      EXPECT_THAT(sockets.calls, ElementsAre("disconnect"));
      EXPECT_EQ(mGlobal::StreamingObject(), nullptr);
      EXPECT_TRUE(stream.expired());
    });
  }
}

TEST_F(StreamTearDown, LeavesAStreamOfTheMacrosAlone) {
  for (const Ending& ending : endings) {
    SCOPED_TRACE(ending.name);
    const auto stream = std::make_shared<cQTStreaming>();
    mGlobal::SetStreamingObject(stream);
    Show(ending.act);
    EXPECT_EQ(mGlobal::StreamingObject(), stream);
    mGlobal::SetStreamingObject(nullptr);
  }
}

TEST_F(StreamTearDown, LeavesNothingOfTheDialogInAStreamThatOthersHold) {
  for (const Ending& ending : endings) {
    SCOPED_TRACE(ending.name);
    std::shared_ptr<cQTStreaming> stream;
    Show([&](frmMirelo& form) {
      Update(form);
      stream = mGlobal::StreamingObject();
      sockets.calls.clear();
      ending.act(form);
      EXPECT_THAT(sockets.calls, ElementsAre("disconnect"));
      EXPECT_FALSE(stream->OnStatusText.HasSubscribers());
      EXPECT_FALSE(stream->PerformanceFollowingProcess.HasSubscribers());
    });
    EXPECT_EQ(NumberOf([&] { sockets.Newest().Deliver("LO<STATUSCODE>0"); }), 91)
        << "it has no owner to ask what it is for";
  }
}

TEST_F(StreamTearDown, IsPartOfUnloading) {
  Show([&](frmMirelo& form) {
    Update(form);
    form.Form_Unload();
    EXPECT_FALSE(form.Visible());
    EXPECT_EQ(form.Tag(), "2");
    EXPECT_EQ(mGlobal::StreamingObject(), nullptr);
    EXPECT_THAT(CallStack(), ElementsAre("Mirelo.cMirelo.LoadFrmMirelo"));
  });
}

TEST_F(StreamTearDown, GoesOnWhenTheConnectionCannotBeClosed) {
  for (const Ending& ending : endings) {
    SCOPED_TRACE(ending.name);
    EXPECT_EQ(Show([&](frmMirelo& form) {
                Update(form);
                sockets.Newest().state_failure = Errors::OutOfMemory();
                ending.act(form);
                EXPECT_FALSE(form.Visible());
                EXPECT_EQ(mGlobal::StreamingObject(), nullptr);
              }),
              2);
  }
}

TEST_F(StreamTearDown, GoesOnWhenTheStatusLineCannotBeShown) {
  Show([&](frmMirelo& form) {
    Update(form);
    sockets.Newest().state_failure = Errors::OutOfMemory();
    mGlobal::StreamingObject()->OnStatusText.Subscribe(
        [](const std::string&) { throw Errors::OutOfMemory(); });
    form.ButCancel.UserPress();
    EXPECT_FALSE(form.Visible());
    EXPECT_EQ(form.Tag(), "2");
    EXPECT_EQ(mGlobal::StreamingObject(), nullptr);
  });
}

// All that comes behind the tear-down ignores failures.
TEST_F(StreamTearDown, IsFollowedByTheTagEvenWhenTheWindowDoesNotHide) {
  const Ending all[] = {endings[0], endings[1], {"unloading", [](frmMirelo& form) { form.Form_Unload(); }}};
  for (const Ending& ending : all) {
    SCOPED_TRACE(ending.name);
    Show([&](frmMirelo& form) {
      const auto cookie = form.Appearance.Subscribe([&] {
        if (!form.Visible()) throw Errors::OutOfMemory();
      });
      ending.act(form);
      form.Appearance.Unsubscribe(cookie);
      EXPECT_EQ(form.Tag(), "2");
      EXPECT_THAT(CallStack(), ElementsAre("Mirelo.cMirelo.LoadFrmMirelo"));
    });
  }
}

TEST_F(StreamTearDown, IsThereForADialogThatDiesOtherwise) {
  std::shared_ptr<cQTStreaming> stream;
  Answers({"ABORT"});
  Show([&](frmMirelo& form) {
    Update(form);
    stream = mGlobal::StreamingObject();
    throw Errors::OutOfMemory();
  });
  EXPECT_FALSE(stream->OnStatusText.HasSubscribers());
  mGlobal::SetStreamingObject(nullptr);
}

}  // namespace
}  // namespace mirelo::testing
