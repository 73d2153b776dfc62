#include "forms/form.h"

#include "forms/button.h"
#include "forms/control_test.h"
#include "forms/simple_controls.h"
#include "forms/text_box.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LoggingForm : public forms::Form {
 public:
  LoggingForm() : Form("frmLogging", "Logging") { Design(3000, 2000, Border::FixedDialog); }
  void Form_Load() override { calls.push_back("Load"); }
  void Form_Activate() override { calls.push_back("Activate"); }
  void Form_Unload() override { calls.push_back(std::string("Unload ") + (Visible() ? "shown" : "hidden")); }
  std::vector<std::string> calls;
};

TEST(Form, StartsHiddenWithWhatItWasDesignedWith) {
  const LoggingForm form;
  EXPECT_EQ(form.Name(), "frmLogging");
  EXPECT_EQ(form.Caption(), "Logging");
  EXPECT_EQ(form.Tag(), "");
  EXPECT_EQ(form.BorderStyle(), forms::Form::Border::FixedDialog);
  EXPECT_EQ(form.WindowState(), forms::Form::State::Normal);
  EXPECT_EQ(form.Width(), 3000);
  EXPECT_EQ(form.Height(), 2000);
  EXPECT_FALSE(form.Visible());
  EXPECT_EQ(form.ActiveControl(), nullptr);
  EXPECT_THAT(form.calls, IsEmpty());
}

TEST(Form, IsSizableUnlessDesignedOtherwise) {
  const forms::Form form("frm", "");
  EXPECT_EQ(form.BorderStyle(), forms::Form::Border::Sizable);
  EXPECT_EQ(static_cast<int>(forms::Form::Border::Sizable), 2);
  EXPECT_EQ(static_cast<int>(forms::Form::Border::SizableToolWindow), 5);
}

TEST(Form, TellsTheViewsWhatAPersonSees) {
  LoggingForm form;
  const forms::TextBox box(form, "box", nullptr);
  int changes = 0;
  form.Appearance.Subscribe([&] { ++changes; });
  form.Caption("other");
  form.WindowState(forms::Form::State::Maximized);
  form.Show();
  form.Hide();
  form.ActiveControl(nullptr);
  EXPECT_EQ(changes, 5);
  form.Tag("not seen");
  EXPECT_EQ(changes, 5);
}

TEST(Form, LoadsOnceUntilItIsClosed) {
  LoggingForm form;
  form.Load();
  form.Load();
  EXPECT_THAT(form.calls, ElementsAre("Load"));
  form.Close();
  form.Load();
  EXPECT_THAT(form.calls, ElementsAre("Load", "Unload hidden", "Load"));
}

TEST(Form, UnloadsBeforeItIsHiddenAndEmptiesItsTagBehindThat) {
  struct Answering : LoggingForm {
    void Form_Unload() override {
      LoggingForm::Form_Unload();
      Tag("2");
    }
  } form;
  form.Show();
  form.Close();
  EXPECT_THAT(form.calls, ElementsAre("Unload shown"));
  EXPECT_EQ(form.Tag(), "");
  EXPECT_FALSE(form.Visible());
}

TEST(Form, IsActivatedAsOftenAsItBecomesTheActiveOne) {
  LoggingForm form;
  form.Activate();
  form.Activate();
  EXPECT_THAT(form.calls, ElementsAre("Activate", "Activate"));
}

TEST(Form, DoesNotActivateInsideItsActivation) {
  struct Nesting : LoggingForm {
    void Form_Activate() override {
      LoggingForm::Form_Activate();
      Activate();
      calls.push_back("goes on");
    }
  } form;
  form.Activate();
  EXPECT_THAT(form.calls, ElementsAre("Activate", "goes on"));
  form.Activate();
  EXPECT_EQ(form.calls.size(), 4U);
}

TEST(Form, CanBeActivatedAgainAfterAnActivationThatFailed) {
  struct Failing : LoggingForm {
    void Form_Activate() override {
      LoggingForm::Form_Activate();
      throw Errors::TypeMismatch();
    }
  } form;
  EXPECT_EQ(NumberOf([&] { form.Activate(); }), 13);
  EXPECT_EQ(NumberOf([&] { form.Activate(); }), 13);
  EXPECT_THAT(form.calls, ElementsAre("Activate", "Activate"));
}

class FormControls : public ControlTest {
 protected:
  FormControls() {
    Watch(add.Click, "add");
    Watch(cancel.Click, "cancel");
    Watch(other.Click, "other");
    add.Default(true);
    cancel.Cancel(true);
  }
  forms::Panel panel{form, "panel", nullptr};
  forms::TextBox text{form, "text", &panel};
  forms::Button other{form, "other", &panel};
  forms::Button add{form, "add", &panel};
  forms::Button cancel{form, "cancel", nullptr};
};

TEST_F(FormControls, AreInTabOrderAndFoundByName) {
  EXPECT_THAT(form.Controls(), ElementsAre(&panel, &text, &other, &add, &cancel));
  EXPECT_EQ(form.Find("text"), &text);
  EXPECT_EQ(form.Find("Text"), nullptr);
  EXPECT_EQ(form.Find(""), nullptr);
}

TEST_F(FormControls, KnowTheDefaultAndTheCancelButton) {
  EXPECT_EQ(form.DefaultButton(), &add);
  EXPECT_EQ(form.CancelButton(), &cancel);
  const forms::Form bare("frm", "");
  EXPECT_EQ(bare.DefaultButton(), nullptr);
  EXPECT_EQ(bare.CancelButton(), nullptr);
}

TEST_F(FormControls, LetEnterPressTheDefaultButtonAndEscapeTheCancelButton) {
  form.UserEnter();
  text.SetFocus();
  form.UserEnter();
  form.UserEscape();
  EXPECT_THAT(raised, ElementsAre("add", "add", "cancel"));
}

TEST_F(FormControls, LetEnterPressTheButtonThatHasTheFocus) {
  other.SetFocus();
  form.UserEnter();
  form.UserEscape();
  EXPECT_THAT(raised, ElementsAre("other", "cancel"));
}

TEST_F(FormControls, LetEnterPressTheDefaultButtonWhenTheFocusedOneCannotBeUsed) {
  other.SetFocus();
  other.Enabled(false);
  form.UserEnter();
  EXPECT_THAT(raised, ElementsAre("add"));
}

TEST_F(FormControls, LetEnterAndEscapeDoNothingWithoutAUsableButton) {
  add.Enabled(false);
  cancel.Visible(false);
  form.UserEnter();
  form.UserEscape();
  forms::Form bare("frm", "");
  bare.UserEnter();
  bare.UserEscape();
  EXPECT_THAT(raised, IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
