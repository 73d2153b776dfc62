// One control of each kind, shown by Windows and used by a person.

#include <functional>
#include <string>
#include <vector>

#include "windows/views/sample_form.h"

#include "automation/runtime_error.h"
#include "forms/combo_box.h"
#include "forms/list_box.h"
#include "forms/scroll_bar.h"
#include "forms/tab.h"

namespace mirelo::windows {
namespace {

using ::testing::ElementsAre;

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

TEST_F(Controls, StandOneBelowTheOtherWithoutALayout) {
  person.Does("look", [&] {
    EXPECT_GE(person.PlaceOf("text").top, person.PlaceOf("label").bottom);
    EXPECT_GE(person.PlaceOf("check").top, person.PlaceOf("text").bottom);
    EXPECT_GT(person.PlaceOf("text").right, person.PlaceOf("text").left);
    form.Hide();
  });
  desktop.ShowModal(form);
}

TEST_F(Controls, GiveLongerWordsTheRoomThatTheyNeed) {
  person.Does("look", [&] {
    form.label.Caption("Words that are longer than those before");
    const RECT place = person.PlaceOf("label");
    EXPECT_GE(place.right - place.left,
              person.Window().views().letters().ExtentOf(form.label.Caption()).width);
    form.Hide();
  });
  desktop.ShowModal(form);
}

TEST_F(Controls, TakeWhatAPersonDoes) {
  person.Does("tick", [&] { person.Click("check"); });
  person.Does("go to the text", [&] {
    EXPECT_EQ(form.check.Value(), 1);
    EXPECT_TRUE(person.IsTicked("check"));
    person.Click("text");
  });
  person.Does("type", [&] { person.Type("ab"); });
  person.Does("press", [&] { person.Click("ok"); });
  desktop.ShowModal(form);
  EXPECT_THAT(form.noted, ElementsAre("check", "text a", "text ab", "ok"));
}

TEST_F(Controls, AreFoundByTheirNumbersInTheOrderOfTheForm) {
  person.Does("look, and press", [&] {
    const HWND window = person.Window().window();
    EXPECT_EQ(::GetDlgItem(window, 1001), person.Find("text"));
    ::PostMessageW(::GetDlgItem(window, 1004), BM_CLICK, 0, 0);
  });
  desktop.ShowModal(form);
  EXPECT_THAT(form.noted, ElementsAre("ok"));
}

TEST_F(Controls, AreClickedByTheMessageOfOtherPrograms) {
  person.Does("tick", [&] { ::PostMessageW(person.Find("check"), BM_CLICK, 0, 0); });
  person.Does("write", [&] { person.Replace("text", "all at once"); });
  person.Does("press", [&] { ::PostMessageW(person.Find("ok"), BM_CLICK, 0, 0); });
  desktop.ShowModal(form);
  EXPECT_THAT(form.noted, ElementsAre("check", "text all at once", "ok"));
}

TEST_F(Controls, EndByEnterAndEscape) {
  person.Does("press Enter", [&] {
    EXPECT_TRUE(person.HasFocus("text"));
    person.Press(VK_RETURN);
  });
  desktop.ShowModal(form);
  person.Does("press Escape", [&] { person.Press(VK_ESCAPE); });
  desktop.ShowModal(form);
  EXPECT_THAT(form.noted, ElementsAre("ok", "cancel"));
}

TEST_F(Controls, ThatAreButtonsAreWhatEnterPressesWhileTheyHaveTheFocus) {
  person.Does("go to the button", [&] { person.Click("press"); });
  person.Does("press Enter", [&] { person.Press(VK_RETURN); });
  person.Does("press blank", [&] { person.Press(VK_SPACE); });
  person.Does("press Escape", [&] { person.Press(VK_ESCAPE); });
  desktop.ShowModal(form);
  EXPECT_THAT(form.noted, ElementsAre("press", "press", "press", "cancel"));
}

TEST_F(Controls, AreWalkedThroughByTheTabKeyInTheirOrder) {
  std::vector<std::string> walked;
  const auto note = [&] { walked.push_back(form.ActiveControl()->Name()); };
  for (int step = 0; step < 5; ++step)
    person.Does("press Tab", [&] { person.Press(VK_TAB); }), person.Does("look", note);
  person.Does("end", [&] { form.Hide(); });
  desktop.ShowModal(form);
  EXPECT_THAT(walked, ElementsAre("check", "press", "ok", "cancel", "text"));
}

TEST_F(Controls, ArePressedByTheirMarkedLetters) {
  person.Does("press Alt+T", [&] { person.PressWithAlt(L't'); });
  person.Does("press Alt+P", [&] { person.PressWithAlt(L'p'); });
  person.Does("press Alt+O", [&] { person.PressWithAlt(L'o'); });
  desktop.ShowModal(form);
  EXPECT_THAT(form.noted, ElementsAre("check", "press", "ok"));
}

TEST_F(Controls, ThatAreDisabledTakeNothingAndGiveTheFocusOn) {
  person.Does("go to the check box", [&] { person.Click("check"); });
  person.Does("disable it", [&] {
    form.check.Enabled(false);
    EXPECT_FALSE(person.HasFocus("check"));
    EXPECT_FALSE(person.IsEnabled("check"));
    ::PostMessageW(person.Find("check"), BM_CLICK, 0, 0);
  });
  person.Does("press Escape", [&] {
    EXPECT_EQ(form.check.Value(), 1);
    person.Press(VK_ESCAPE);
  });
  desktop.ShowModal(form);
  EXPECT_THAT(form.noted, ElementsAre("check", "cancel"));
}

TEST_F(Controls, ThatTheirHandlerUnticksAreSeenUnticked) {
  form.check.Click.Subscribe([&] { form.check.Value(0); });
  person.Does("tick", [&] { person.Click("check"); });
  person.Does("look", [&] {
    EXPECT_FALSE(person.IsTicked("check"));
    form.Hide();
  });
  desktop.ShowModal(form);
}

TEST_F(Controls, ShowWhatTheirHandlerMakesOfATextAndKeepThePlaceInIt) {
  form.text.Text("ac");
  form.text.Change.Subscribe([&] {
    if (form.text.Text() == "a/c") form.text.Text("a_c");
  });
  person.Does("go between the letters", [&] {
    person.Click("text");
    ::SendMessageW(person.Find("text"), EM_SETSEL, 1, 1);
  });
  person.Does("type", [&] {
    ::SendMessageW(person.Find("text"), EM_SETSEL, 1, 1);
    person.Type("/b");
  });
  person.Does("look", [&] {
    EXPECT_EQ(person.TextOf("text"), "a_bc");
    form.Hide();
  });
  desktop.ShowModal(form);
  EXPECT_EQ(form.text.Text(), "a_bc");
}

TEST_F(Controls, GoWithTheirCloseBox) {
  person.Does("close", [&] { ::PostMessageW(person.Window().window(), WM_CLOSE, 0, 0); });
  form.Tag("77");
  desktop.ShowModal(form);
  EXPECT_FALSE(form.Visible());
  EXPECT_EQ(form.Tag(), "");
}

TEST_F(Controls, GoWithTheWindowThatTheyLieAbove) {
  const HWND program = ::CreateWindowExW(0, WC_STATICW, L"Program", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                         300, 200, nullptr, nullptr, nullptr, nullptr);
  ::SetActiveWindow(program);
  person.Does("close the program's window", [&] {
    EXPECT_EQ(::IsWindowEnabled(program), 0) << "only the form takes what the person does";
    ::DestroyWindow(program);
  });
  desktop.ShowModal(form);
  EXPECT_FALSE(form.Visible());
}

TEST_F(Controls, RaiseWhatFailsBehindAClickToWhoShowedThem) {
  form.check.Click.Subscribe([] { throw Errors::InvalidProcedureCall(); });
  person.Does("tick", [&] { person.Click("check"); });
  EXPECT_THROW(desktop.ShowModal(form), RuntimeError);
  EXPECT_FALSE(form.Visible());
}

TEST_F(Controls, LeaveNoWindowBehindWhenTheirLayoutIsAnotherForms) {
  forms::Form wrong("frmColor", "Wrong");
  forms::Panel panel(wrong, "C1ElasticColor", nullptr);
  const forms::Label no_cell(wrong, "no cell", &panel);
  EXPECT_THROW(desktop.ShowModal(wrong), RuntimeError);
  EXPECT_EQ(::FindWindowW(nullptr, L"Wrong"), nullptr);
  person.Does("press Escape in the next", [&] { person.Press(VK_ESCAPE); });
  desktop.ShowModal(form);
  EXPECT_THAT(form.noted, ElementsAre("cancel"));
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

TEST_F(Controls, LetStepsOfTheLoopGoOnWhileABoxIsUp) {
  int steps = 0;
  const std::function<void()> again = [&] {
    ++steps;
    loop.StartTimer(std::chrono::milliseconds(1), again);
  };
  form.check.Click.Subscribe([&] {
    again();
    EXPECT_EQ(desktop.MessageBox("Wait.", host::Desktop::kOkOnly, ""), host::Desktop::Answer::Ok);
  });
  person.Does("tick", [&] { person.Click("check"); });
  person.Waits("the box", [] { return Person::Box("Wait.") != nullptr; });
  person.Waits("steps", [&] { return steps > 5; });
  person.Answers("Wait.", IDOK);
  person.Does("end", [&] { form.Hide(); });
  desktop.ShowModal(form);
}

TEST_F(Controls, RaiseWhatFailsWhileABoxIsUpToWhoShowedTheBox) {
  bool failed = false;
  bool raised = false;
  form.check.Click.Subscribe([&] {
    loop.StartTimer(std::chrono::milliseconds(1), [&] {
      failed = true;
      throw Errors::InvalidProcedureCall();
    });
    try {
      desktop.MessageBox("Wait.", host::Desktop::kOkOnly, "");
    } catch (const RuntimeError&) {
      raised = true;
    }
  });
  person.Does("tick", [&] { person.Click("check"); });
  person.Waits("the failure", [&] { return failed; });
  person.Answers("Wait.", IDOK);
  person.Does("end", [&] { form.Hide(); });
  desktop.ShowModal(form);
  EXPECT_TRUE(raised);
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
    for (const char* const text : {"It failed again.", "And again."}) {
      answers.push_back(desktop.MessageBox(text, host::Desktop::kAbortRetryIgnore, ""));
    }
    answers.push_back(desktop.MessageBox("Done.", host::Desktop::kInformation, ""));
  });
  person.Does("tick", [&] { person.Click("check"); });
  person.Waits("the box", [] { return Person::Box("Go on?") != nullptr; });
  person.Waits("the form to be behind it", [&] {
    return ::IsWindowEnabled(person.Window().window()) == 0 && TextOf(Person::Box("Go on?")) == "Question";
  });
  person.Answers("Go on?", IDYES);
  person.Answers("It failed.", IDRETRY);
  person.Answers("Again?", IDNO);
  person.Answers("It failed again.", IDABORT);
  person.Answers("And again.", IDIGNORE);
  person.Answers("Done.", IDOK);
  person.Does("end", [&] { form.Hide(); });
  desktop.ShowModal(form);
  EXPECT_THAT(answers,
              ElementsAre(Answer::Yes, Answer::Retry, Answer::No, Answer::Abort, Answer::Ignore, Answer::Ok));
}

TEST_F(Controls, LieBelowTheFormsThatAreShownOverThem) {
  Sample second;
  form.check.Click.Subscribe([&] { desktop.ShowModal(second); });
  HWND below = nullptr;
  person.Does("tick", [&] {
    below = person.Window().window();
    person.Click("check");
  });
  person.Waits("the second", [&] { return forms::ActiveForm() == &second && second.Visible(); });
  person.Does("press Escape", [&] {
    EXPECT_EQ(::IsWindowEnabled(below), 0);
    ::PostMessageW(below, WM_CLOSE, 0, 0);
    person.Press(VK_ESCAPE);
  });
  person.Does("end", [&] {
    EXPECT_TRUE(form.Visible());
    EXPECT_NE(::IsWindowEnabled(below), 0);
    person.Press(VK_ESCAPE);
  });
  desktop.ShowModal(form);
  EXPECT_THAT(second.noted, ElementsAre("cancel"));
  EXPECT_THAT(form.noted, ElementsAre("check", "cancel"));
}

}  // namespace
}  // namespace mirelo::windows
