#include <optional>

#include "automation/runtime_error.h"
#include "dialog/dialog_test.h"
#include "dialog/scripted_portfolios.h"
#include "host/desktop.h"
#include "host/window_placement.h"
#include "streaming/cQTStreaming.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// A dialog with a ticker, on which the person presses Go, and a QuoteTracker that answers.
class Going : public DialogTest {
 protected:
  Going() {
    internet.answer = [this](const auto& request) { return tracker(request); };
    desktop.placements["frmMirelo"] = {.normal = {10, 20, 430, 520}};
  }

  // What the macros get when the person presses Go after `acts`, on the settings' tab.
  std::int32_t Go(std::function<void(frmMirelo&)> acts = [](frmMirelo&) {}) {
    return Show([acts = std::move(acts)](frmMirelo& form) {
      form.txtTicker.UserEdit("MSFT");
      form.ButAdd.UserPress();
      form.C1TTickersSettings.UserSelect(kSettings);
      acts(form);
      form.ButGo.UserPress();
    });
  }
  static Variant Place(const char* key) { return Stored("Windows settings\\frmMirelo", key); }

  ScriptedPortfolios tracker;
};

TEST_F(Going, TellsTheMacrosToStreamWithoutAPauseBetweenUpdates) {
  const struct {
    bool updates;
    const char* seconds;
    std::int32_t result;
  } cases[] = {{true, "0", 77}, {true, "15", 78}, {true, "0.5", 78}, {false, "0", 78}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.seconds);
    EXPECT_EQ(Go([&](frmMirelo& form) {
                if (!c.updates) form.chkUpdOrNot.UserClick();
                form.txtSec.UserEdit(c.seconds);
              }),
              c.result);
    EXPECT_THAT(CallStack(), IsEmpty());
    Save("UpdateEvery", 1);
    facade->m_ObjExcelApplication(workbook::Spreadsheet::New().Application());
  }
}

TEST_F(Going, HidesTheDialogAndLeavesTheResultInItsTag) {
  Show([](frmMirelo& form) {
    form.txtTicker.UserEdit("MSFT");
    form.ButAdd.UserPress();
    form.ButGo.UserPress();
    EXPECT_FALSE(form.Visible());
    EXPECT_EQ(form.Tag(), "78");
    EXPECT_THAT(CallStack(), ElementsAre("Mirelo.cMirelo.LoadFrmMirelo"));
  });
}

TEST_F(Going, EntersItsRoutineUnderItsName) {
  const auto traces = Traces([this] { Go(); });
  EXPECT_THAT(traces, Contains("Entered Mirelo.frmMirelo.ButGo_Click"));
  EXPECT_THAT(traces, Contains("Exited Mirelo.frmMirelo.ButGo_Click"));
}

TEST_F(Going, StoresWhatTheDialogShows) {
  Go([](frmMirelo& form) { form.txtSec.UserEdit("15"); });
  EXPECT_EQ(facade->Seconds(), 15);
}

TEST_F(Going, KeepsTheWindowsPlace) {
  Go();
  EXPECT_EQ(Place("NormalPosLeft").ToInt32(), 10);
  EXPECT_EQ(Place("NormalPosBottom").ToInt32(), 520);
}

TEST_F(Going, KeepsThePlaceOnlyOnceTheCommitWasMade) {
  tracker.names = std::nullopt;
  EXPECT_EQ(Go(), 2);
  EXPECT_TRUE(Place("NormalPosLeft").IsEmpty());
  EXPECT_THAT(desktop.boxes, SizeIs(1));
}

TEST_F(Going, LeavesTheDialogUpAndReadyForAnotherTryWhenTheCommitFails) {
  tracker.names = std::nullopt;
  EXPECT_EQ(Go([&](frmMirelo& form) {
              form.txtSec.UserEdit("15");
              form.ButGo.UserPress();
              EXPECT_TRUE(form.Visible());
              EXPECT_EQ(form.Tag(), "");
              EXPECT_EQ(form.txtSec.Text(), "15");
              EXPECT_EQ(form.C1TTickersSettings.CurrTab(), kSettings);
              tracker.names = "OK\r\nMain\r\n";
            }),
            78);
}

TEST_F(Going, EndsAnUpdateOfTheQuoteSources) {
  EXPECT_EQ(Go([&](frmMirelo& form) {
              form.txtSec.UserEdit("0");
              form.ButUpDate.UserPress();
              EXPECT_NE(mGlobal::StreamingObject(), nullptr);
              sockets.calls.clear();
            }),
            77);
  EXPECT_THAT(sockets.calls, ElementsAre("disconnect"));
  EXPECT_EQ(mGlobal::StreamingObject(), nullptr);
}

// All that comes behind the end of that update ignores failures.
TEST_F(Going, LeavesItsTagEvenWhenTheWindowDoesNotHide) {
  EXPECT_EQ(Go([](frmMirelo& form) {
              form.Appearance.Subscribe([&form] {
                if (!form.Visible()) throw Errors::OutOfMemory();
              });
            }),
            78);
}

// A desktop that cannot say where a window is as often as told.
class PlacelessDesktop : public host::Desktop {
 public:
  explicit PlacelessDesktop(host::Desktop& inner) : inner_(inner) {}
  int failures = 0;

  std::optional<host::WindowPlacement> GetWindowPlacement(forms::Form& form) override {
    if (failures > 0 && failures-- > 0) throw Errors::OutOfMemory();
    return inner_.GetWindowPlacement(form);
  }
  Answer MessageBox(const std::string& text, int style, const std::string& title) override {
    return inner_.MessageBox(text, style, title);
  }
  void ShowModal(forms::Form& form) override { inner_.ShowModal(form); }
  void Beep() override { inner_.Beep(); }
  void SetForegroundWindow(forms::Form& form) override { inner_.SetForegroundWindow(form); }
  bool SetWindowPlacement(forms::Form& form, const host::WindowPlacement& placement) override {
    return inner_.SetWindowPlacement(form, placement);
  }
  std::optional<host::WindowPlacement> GetDesktopPlacement() override { return inner_.GetDesktopPlacement(); }
  int ShellExecuteA(const std::string& verb, const std::string& file) override {
    return inner_.ShellExecuteA(verb, file);
  }

 private:
  host::Desktop& inner_;
};

class GoingWithoutAPlace : public Going {
 protected:
  GoingWithoutAPlace() { host.Use(placeless); }

  std::int32_t GoWhilePlaceFails(int times) {
    return Go([this, times](frmMirelo& form) {
      form.ReloadOnActivate(false);
      placeless.failures = times;
    });
  }

  PlacelessDesktop placeless{desktop};
};

TEST_F(GoingWithoutAPlace, SavesThePlaceAgainUntilThatWorks) {
  Answers({"RETRY", "RETRY"});
  EXPECT_EQ(GoWhilePlaceFails(2), 78);
  EXPECT_THAT(ReportedErrors(), ElementsAre(7, 7));
  // The first report brought the dialog to the front, which left a name on the call stack.
  EXPECT_THAT(ReportedRoutines(),
              ElementsAre("Mirelo.frmMirelo.ButGo_Click", "Mirelo.frmMirelo.Form_Activate"));
  EXPECT_EQ(Place("NormalPosLeft").ToInt32(), 10);
}

TEST_F(GoingWithoutAPlace, EndsTheDialogWithoutItWhenThatIsIgnored) {
  Answers({"IGNORE"});
  EXPECT_EQ(GoWhilePlaceFails(1), 78);
  EXPECT_TRUE(Place("NormalPosLeft").IsEmpty());
}

// What was committed stays committed, but the macros are not told.
TEST_F(GoingWithoutAPlace, LeavesTheDialogUpWhenThatIsAborted) {
  Answers({"ABORT"});
  EXPECT_EQ(GoWhilePlaceFails(1), 2);
  EXPECT_EQ(Stored("Settings", "Seconds").ToText(), "60");
}

}  // namespace
}  // namespace mirelo::testing
