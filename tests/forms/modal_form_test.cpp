#include <functional>
#include <string>
#include <vector>

#include "forms/control_test.h"
#include "forms/form.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using Done = std::function<bool()>;

// Forms that write what happens to them into one list.
class ModalForm : public ::testing::Test {
 protected:
  class Logged : public forms::Form {
   public:
    Logged(std::vector<std::string>& log, const std::string& name) : Form(name, ""), log_(log) {}
    void Form_Load() override { Log("load"); }
    void Form_Activate() override {
      Log("activate");
      if (on_activate) on_activate();
    }
    void Form_Unload() override { Log("unload"); }
    std::function<void()> on_activate;

   private:
    void Log(const char* what) { log_.push_back(Name() + " " + what); }
    std::vector<std::string>& log_;
  };

  std::vector<std::string> log;
  Logged outer{log, "outer"};
  Logged inner{log, "inner"};
};

TEST_F(ModalForm, IsLoadedShownAndActivatedInThisOrder) {
  outer.on_activate = [&] { EXPECT_TRUE(outer.Visible()); };
  forms::ShowModal(outer, [&](const Done& done) {
    EXPECT_FALSE(done());
    outer.Hide();
    EXPECT_TRUE(done());
  });
  EXPECT_THAT(log, ElementsAre("outer load", "outer activate"));
}

TEST_F(ModalForm, IsLoadedAnewOnlyAfterItWasClosed) {
  forms::ShowModal(outer, [&](const Done&) { outer.Hide(); });
  forms::ShowModal(outer, [&](const Done&) { outer.Close(); });
  forms::ShowModal(outer, [&](const Done&) { outer.Hide(); });
  EXPECT_THAT(log, ElementsAre("outer load", "outer activate", "outer activate", "outer unload", "outer load",
                               "outer activate"));
}

TEST_F(ModalForm, KeepsItsTagWhenItIsHiddenAndLosesItWhenItIsClosed) {
  forms::ShowModal(outer, [&](const Done&) {
    outer.Tag("78");
    outer.Hide();
  });
  EXPECT_EQ(outer.Tag(), "78");
  forms::ShowModal(outer, [&](const Done& done) {
    outer.Close();
    EXPECT_TRUE(done());
  });
  EXPECT_EQ(outer.Tag(), "");
}

TEST_F(ModalForm, IsTheActiveFormWhileNoOtherLiesAboveIt) {
  EXPECT_EQ(forms::ActiveForm(), nullptr);
  forms::ShowModal(outer, [&](const Done&) {
    EXPECT_EQ(forms::ActiveForm(), &outer);
    forms::ShowModal(inner, [&](const Done&) {
      EXPECT_EQ(forms::ActiveForm(), &inner);
      inner.Hide();
    });
    EXPECT_EQ(forms::ActiveForm(), &outer);
    outer.Hide();
  });
  EXPECT_EQ(forms::ActiveForm(), nullptr);
}

TEST_F(ModalForm, IsActivatedAgainWhenTheFormAboveItGoes) {
  forms::ShowModal(outer, [&](const Done&) {
    forms::ShowModal(inner, [&](const Done&) { inner.Hide(); });
    log.push_back("back");
    outer.Hide();
  });
  EXPECT_THAT(log, ElementsAre("outer load", "outer activate", "inner load", "inner activate",
                               "outer activate", "back"));
}

TEST_F(ModalForm, IsNotActivatedWhenItWasHiddenUnderTheFormAboveIt) {
  forms::ShowModal(outer, [&](const Done& done) {
    forms::ShowModal(inner, [&](const Done&) {
      outer.Hide();
      inner.Hide();
    });
    EXPECT_TRUE(done());
  });
  EXPECT_THAT(log, ElementsAre("outer load", "outer activate", "inner load", "inner activate"));
}

TEST_F(ModalForm, ActivatesOnlyTheFormNextBelow) {
  Logged third{log, "third"};
  forms::ShowModal(outer, [&](const Done&) {
    forms::ShowModal(inner, [&](const Done&) {
      log.clear();
      forms::ShowModal(third, [&](const Done&) { third.Hide(); });
      EXPECT_THAT(log, ElementsAre("third load", "third activate", "inner activate"));
      inner.Hide();
    });
    outer.Hide();
  });
  EXPECT_THAT(log, ElementsAre("third load", "third activate", "inner activate", "outer activate"));
}

// An activation that fails half way and reports that in a dialog goes on where it was.
TEST_F(ModalForm, IsNotActivatedByAFormThatItsOwnActivationShowed) {
  outer.on_activate = [&] {
    forms::ShowModal(inner, [&](const Done&) { inner.Hide(); });
    log.push_back("outer goes on");
  };
  forms::ShowModal(outer, [&](const Done&) { outer.Hide(); });
  EXPECT_THAT(log,
              ElementsAre("outer load", "outer activate", "inner load", "inner activate", "outer goes on"));
}

TEST_F(ModalForm, EndsAtOnceWhenItsActivationHidesIt) {
  outer.on_activate = [&] { outer.Hide(); };
  bool ended = false;
  forms::ShowModal(outer, [&](const Done& done) { ended = done(); });
  EXPECT_TRUE(ended);
}

TEST_F(ModalForm, GoesWhenTheLoopUnderItFails) {
  forms::ShowModal(outer, [&](const Done&) {
    EXPECT_EQ(NumberOf([&] { forms::ShowModal(inner, [](const Done&) { throw Errors::OutOfMemory(); }); }),
              7);
    EXPECT_FALSE(inner.Visible());
    EXPECT_EQ(forms::ActiveForm(), &outer);
    outer.Hide();
  });
  EXPECT_THAT(log, ElementsAre("outer load", "outer activate", "inner load", "inner activate"));
}

TEST_F(ModalForm, GoesWhenItsActivationFails) {
  outer.on_activate = [] { throw Errors::TypeMismatch(); };
  EXPECT_EQ(NumberOf([&] { forms::ShowModal(outer, [](const Done&) { FAIL() << "it ran"; }); }), 13);
  EXPECT_FALSE(outer.Visible());
  EXPECT_EQ(forms::ActiveForm(), nullptr);
}

}  // namespace
}  // namespace mirelo::testing
