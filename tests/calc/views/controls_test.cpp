// One control of each kind, shown by the office and used by a person.

#include <chrono>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "calc/views/office_rig.h"
#include "forms/button.h"
#include "forms/check_box.h"
#include "forms/combo_box.h"
#include "forms/grid.h"
#include "forms/list_box.h"
#include "forms/scroll_bar.h"
#include "forms/simple_controls.h"
#include "forms/tab.h"
#include "forms/text_box.h"

namespace mirelo::calc {
namespace {

using ::testing::ElementsAre;

class Sample : public forms::Form {
 public:
  Sample() : Form("Sample", "Sample") {
    ok.Click.Subscribe([this] { Note("ok"), Hide(); });
    cancel.Click.Subscribe([this] { Note("cancel"), Hide(); });
    check.Click.Subscribe([this] { Note("check"); });
    text.Change.Subscribe([this] { Note("text " + text.Text()); });
    ok.Default(true);
    cancel.Cancel(true);
  }
  void Note(std::string what) { noted.push_back(std::move(what)); }

  forms::Label label{*this, "label", nullptr, "Words"};
  forms::TextBox text{*this, "text", nullptr};
  forms::CheckBox check{*this, "check", nullptr, "Tick"};
  forms::Button ok{*this, "ok", nullptr, "&OK"};
  forms::Button cancel{*this, "cancel", nullptr, "&Cancel"};
  std::vector<std::string> noted;
};

class Controls : public OnTheDesktop {
 protected:
  Sample form;
};

TEST_F(Controls, AreShownWithWhatTheyHold) {
  form.text.Text("before");
  person.Does("look", [&] {
    EXPECT_EQ(person.TextOf("text"), "before");
    EXPECT_TRUE(person.IsShown("label"));
    form.text.Text("after");
    EXPECT_EQ(person.TextOf("text"), "after");
    form.label.Visible(false);
    EXPECT_FALSE(person.IsShown("label"));
    form.Hide();
  });
  desktop.ShowModal(form);
  EXPECT_FALSE(form.Visible());
}

TEST_F(Controls, GiveLongerWordsTheRoomThatTheyNeed) {
  person.Does("look", [&] {
    form.label.Caption("Words that are longer than those before");
    const View& label = person.Find("label");
    EXPECT_GE(label.As<css::awt::XWindow>()->getPosSize().Width, Views::Preferred(label).width);
    form.Hide();
  });
  desktop.ShowModal(form);
}

TEST_F(Controls, TakeWhatAPersonDoes) {
  person.Does("tick", [&] { person.Click("check"); });
  person.Does("type", [&] {
    EXPECT_EQ(form.check.Value(), 1);
    person.Click("text");
    person.Type("ab");
  });
  person.Does("press", [&] { person.Click("ok"); });
  desktop.ShowModal(form);
  EXPECT_THAT(form.noted, ElementsAre("check", "text a", "text ab", "ok"));
}

TEST_F(Controls, EndByEnterAndEscape) {
  person.Does("press Enter", [&] { person.Press(css::awt::Key::RETURN); });
  desktop.ShowModal(form);
  person.Does("press Escape", [&] { person.Press(css::awt::Key::ESCAPE); });
  desktop.ShowModal(form);
  EXPECT_THAT(form.noted, ElementsAre("ok", "cancel"));
}

// Of each kind one, and what a person does to it.
class Kinds : public forms::Form {
 public:
  Kinds() : Form("Kinds", "Kinds") {
    for (const char* item : {"one", "two", "three"}) {
      combo.AddItem(item);
      closed.AddItem(item);
      list.AddItem(item);
    }
    report.MultiLine(true);
    picture.Picture("delete");
    combo.Change.Subscribe([this] { Note("combo " + combo.Text()); });
    closed.Click.Subscribe([this] { Note("closed " + closed.Text()); });
    list.Click.Subscribe([this] { Note("list " + std::to_string(list.ListIndex())); });
    field.Click.Subscribe([this] { Note("field"); });
    strip.Click.Subscribe([this] { Note("tab " + std::to_string(strip.CurrTab())); });
    picture.Click.Subscribe([this] { Note("picture"); });
    second_button.Click.Subscribe([this] { Note("second"); });
  }
  void Note(std::string what) { noted.push_back(std::move(what)); }

  forms::ComboBox combo{*this, "combo", nullptr};
  forms::ComboBox closed{*this, "closed", nullptr, forms::ComboBox::Style::DropDownList};
  forms::ListBox list{*this, "list", nullptr};
  forms::ScrollBar bar{*this, "bar", nullptr, 10, 0};
  forms::Label field{*this, "field", nullptr};
  forms::Image image{*this, "image", nullptr, "chart"};
  forms::Line line{*this, "line", nullptr};
  forms::Button picture{*this, "picture", nullptr};
  forms::TextBox report{*this, "report", nullptr, "one\r\ntwo"};
  forms::Tab strip{*this, "strip", nullptr, "&First|&Second"};
  forms::Panel first{*this, "first", &strip};
  forms::Button first_button{*this, "first_button", &first, "One"};
  forms::Panel second{*this, "second", &strip};
  forms::Button second_button{*this, "second_button", &second, "Two"};
  std::vector<std::string> noted;
};

class EachKind : public OnTheDesktop {
 protected:
  void End() {
    person.Does("close", [this] { kinds.Close(); });
    desktop.ShowModal(kinds);
  }

  Kinds kinds;
};

TEST_F(EachKind, TakesTypingAndChoosing) {
  person.Does("type what is no entry", [&] {
    person.Click("combo");
    person.Type("x");
  });
  person.Does("go to the closed one", [&] {
    EXPECT_THAT(kinds.noted, ElementsAre("combo x"));
    person.Click("closed");
  });
  person.Does("choose in it", [&] {
    person.Press(css::awt::Key::DOWN);
    person.Press(css::awt::Key::RETURN);
  });
  End();
  EXPECT_THAT(kinds.noted, ElementsAre("combo x", "closed one"));
}

TEST_F(EachKind, IsClicked) {
  person.Does("click", [&] { person.ClickAt("list", 8, 8); });
  person.Does("click", [&] { person.Click("field"); });
  person.Does("click", [&] { person.Click("picture"); });
  End();
  EXPECT_THAT(kinds.noted, ElementsAre("list 0", "field", "picture"));
}

TEST_F(EachKind, ShowsOneTabAtATime) {
  person.Does("open the second", [&] {
    EXPECT_TRUE(person.IsShown("first_button"));
    EXPECT_FALSE(person.IsShown("second_button"));
    person.Click("strip:1");
  });
  person.Does("press what is on it", [&] {
    EXPECT_FALSE(person.IsShown("first_button"));
    EXPECT_TRUE(person.IsShown("second_button"));
    person.Click("second_button");
  });
  person.Does("go back by the letter",
              [&] { person.Press(css::awt::Key::F, css::awt::KeyModifier::MOD2, u'f'); });
  person.Does("look", [&] { EXPECT_TRUE(person.IsShown("first_button")); });
  End();
  EXPECT_THAT(kinds.noted, ElementsAre("tab 1", "second", "tab 0"));
}

TEST_F(EachKind, KeepsTheLineEndsOfAReport) {
  person.Does("type", [&] {
    EXPECT_EQ(person.TextOf("report"), "one\ntwo");
    person.Click("report");
    person.Press(css::awt::Key::END, css::awt::KeyModifier::MOD1);
    person.Type("!");
  });
  End();
  EXPECT_EQ(kinds.report.Text(), "one\r\ntwo!");
}

TEST_F(EachKind, FollowsWhatTheFormDoes) {
  person.Does("look", [&] {
    kinds.list.ListIndex(2);
    EXPECT_EQ(person.Find("list").Get<css::uno::Sequence<sal_Int16>>("SelectedItems")[0], 2);
    kinds.combo.Text("two");
    EXPECT_EQ(person.TextOf("combo"), "two");
    kinds.bar.Value(7);
    EXPECT_EQ(person.Find("bar").Get<sal_Int32>("ScrollValue"), 3);
    kinds.first.Enabled(false);
    EXPECT_FALSE(person.Find("first_button").Get<bool>("Enabled"));
    kinds.field.BackColor(0x0000FF);
    EXPECT_EQ(person.Find("field").Get<sal_Int32>("BackgroundColor"), 0xFF0000);
  });
  End();
}

TEST_F(Controls, RaiseWhatFailsBehindAClickToWhoShowedThem) {
  form.check.Click.Subscribe([] { throw Errors::InvalidProcedureCall(); });
  person.Does("tick", [&] { person.Click("check"); });
  EXPECT_THROW(desktop.ShowModal(form), RuntimeError);
  EXPECT_FALSE(form.Visible());
}

TEST_F(Controls, LetStepsOfTheLoopGoOn) {
  int steps = 0;
  const std::function<void()> again = [&] {
    if (++steps == 20) return form.Hide();
    loop.StartTimer(std::chrono::milliseconds(1), again);
  };
  loop.StartTimer(std::chrono::milliseconds(1), again);
  desktop.ShowModal(form);
  EXPECT_EQ(steps, 20);
}

// A form that is being filled may wait for a server, and its dialog is not yet run by the office.
class Filling : public Sample {
 public:
  std::function<void()> while_filled;
  void Form_Activate() override { while_filled(); }
};

TEST_F(Controls, GoWithTheDocumentThatIsClosedWhileTheyAreFilled) {
  Filling filling;
  filling.while_filled = [&] {
    css::uno::Reference<css::util::XCloseable>(document, css::uno::UNO_QUERY_THROW)->close(true);
    document.clear();
    EXPECT_FALSE(filling.Visible());
    filling.text.Text("nobody sees it");
  };
  desktop.ShowModal(filling);
  EXPECT_FALSE(filling.Visible());
}

TEST_F(Controls, SayWhereTheyAreWhileTheyAreShown) {
  person.Does("look", [&] {
    const host::WindowRectangle place = desktop.GetWindowPlacement(form)->normal;
    const host::WindowRectangle screen = desktop.GetDesktopPlacement()->normal;
    EXPECT_GT(place.right, place.left);
    EXPECT_GE(place.left, screen.left);
    EXPECT_LE(place.right, screen.right);
    form.Hide();
  });
  desktop.ShowModal(form);
  EXPECT_FALSE(desktop.GetWindowPlacement(form).has_value());
}

TEST_F(Controls, LieBelowTheBoxesThatAreShownOverThem) {
  using Answer = host::Desktop::Answer;
  std::vector<Answer> answers;
  form.check.Click.Subscribe([&] {
    answers.push_back(desktop.MessageBox("Go on?", host::Desktop::kYesNo, "Question"));
    answers.push_back(
        desktop.MessageBox("It failed.", host::Desktop::kAbortRetryIgnore | host::Desktop::kCritical, ""));
    answers.push_back(
        desktop.MessageBox("Again?", host::Desktop::kYesNo | host::Desktop::kInformation, "Question"));
    answers.push_back(desktop.MessageBox("Done.", host::Desktop::kInformation, ""));
  });
  person.Does("tick", [&] { person.Click("check"); });
  person.Answers("Go on?", "Yes");
  person.Answers("It failed.", "Retry");
  person.Answers("Again?", "No");
  person.Answers("Done.", "OK");
  person.Does("end", [&] { form.Hide(); });
  desktop.ShowModal(form);
  EXPECT_THAT(answers, ElementsAre(Answer::Yes, Answer::Retry, Answer::No, Answer::Ok));
}

TEST_F(Controls, OpenNothingThatIsNoFileOrAddress) {
  EXPECT_EQ(desktop.ShellExecuteA("print", "/etc/hostname"), 31);
  EXPECT_EQ(desktop.ShellExecuteA("open", ""), 31);
}

}  // namespace
}  // namespace mirelo::calc
