// Boxes and forms over one another, as a person meets them.

#include "adapters/qt/qt_desktop.h"

#include <QAbstractButton>
#include <QMessageBox>
#include <QWindow>
#include <stdexcept>

#include "adapters/qt/form_window.h"
#include "forms/button.h"
#include "forms/text_box.h"
#include "qt/gui_test.h"
#include "support/socket_pair.h"

namespace mirelo::qt {
namespace {

using host::Desktop;
using Answer = Desktop::Answer;
using Words = std::vector<std::string>;

class Boxes : public GuiTest {
 protected:
  static Words ButtonsOfTheBox() {
    Words captions;
    for (const QAbstractButton* button : Person::Box()->buttons())
      captions.push_back(QString(button->text()).remove(QLatin1Char('&')).toStdString());
    std::sort(captions.begin(), captions.end());
    return captions;
  }
};

TEST_F(Boxes, HaveTheIconButtonsAndTitleThatTheyAreAskedFor) {
  struct Case {
    const char* name;
    int style;
    QMessageBox::Icon icon;
    Words buttons;
    Answer closed;  // what closing the box answers
  };
  const Case cases[] = {
      {"error", Desktop::kCritical, QMessageBox::Critical, {"OK"}, Answer::Ok},
      {"warning", Desktop::kExclamation, QMessageBox::Warning, {"OK"}, Answer::Ok},
      {"information", Desktop::kInformation, QMessageBox::Information, {"OK"}, Answer::Ok},
      {"plain", Desktop::kOkOnly, QMessageBox::NoIcon, {"OK"}, Answer::Ok},
      {"question", Desktop::kYesNo + Desktop::kExclamation, QMessageBox::Warning, {"No", "Yes"}, Answer::No},
      {"failure",
       Desktop::kAbortRetryIgnore + Desktop::kCritical,
       QMessageBox::Critical,
       {"Abort", "Ignore", "Retry"},
       Answer::Abort},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    person.Does("look and close", [&] {
      EXPECT_EQ(Person::Box()->icon(), c.icon);
      EXPECT_EQ(Person::Box()->text(), QLatin1String("A <b>text</b>"));
      EXPECT_EQ(Person::Box()->textFormat(), Qt::PlainText);
      EXPECT_EQ(Person::Box()->windowTitle(), QLatin1String("Dovanta2"));
      EXPECT_EQ(ButtonsOfTheBox(), c.buttons);
      person.Press(Qt::Key_Escape);
    });
    EXPECT_EQ(desktop.MessageBox("A <b>text</b>", c.style, "Dovanta2"), c.closed);
  }
}

TEST_F(Boxes, AnswerWithTheButtonThatIsPressed) {
  struct Case {
    int style;
    const char* button;
    Answer answer;
  };
  const Case cases[] = {
      {Desktop::kOkOnly, "OK", Answer::Ok},
      {Desktop::kYesNo, "Yes", Answer::Yes},
      {Desktop::kYesNo, "No", Answer::No},
      {Desktop::kAbortRetryIgnore, "Abort", Answer::Abort},
      {Desktop::kAbortRetryIgnore, "Retry", Answer::Retry},
      {Desktop::kAbortRetryIgnore, "Ignore", Answer::Ignore},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.button);
    person.Answers("Well?", c.button);
    EXPECT_EQ(desktop.MessageBox("Well?", c.style, ""), c.answer);
  }
}

TEST_F(Boxes, LetTheLoopGoOn) {
  testing::SocketPair pair;
  std::string received;
  bool fired = false;
  loop.Watch(pair.near, QtLoop::kRead, [&](unsigned) { received += pair.Read(); });
  loop.StartTimer(QtLoop::Milliseconds(2), [&] { fired = true; });
  person.Does("wait for news", [&] { pair.Write("news"); });
  person.Waits("the news", [&] { return fired && received == "news"; });
  person.Answers("Busy", "OK");
  desktop.MessageBox("Busy", Desktop::kInformation, "");
  EXPECT_EQ(received, "news");
}

// A form with a button, which does what the test says.
class Asking : public forms::Form {
 public:
  explicit Asking(std::string caption) : Form("Asking", std::move(caption)) {
    Design(3000, 2000, Border::Sizable);
    ask.Default(true);
    end.Cancel(true);
    ask.Click.Subscribe([this] { on_ask(); });
    end.Click.Subscribe([this] { Hide(); });
  }
  void Form_Load() override { log.push_back("load"); }
  void Form_Activate() override { log.push_back("activate"); }
  void Form_Unload() override { log.push_back("unload"); }

  forms::TextBox text{*this, "text", nullptr};
  forms::Button ask{*this, "ask", nullptr, "Ask"};
  forms::Button end{*this, "end", nullptr, "End"};
  std::function<void()> on_ask = [] {};
  Words log;
};

class FormsOnScreen : public GuiTest {
 protected:
  Asking form{"First"};
};

TEST_F(FormsOnScreen, AreLoadedActivatedAndEndWhenTheyHide) {
  person.Does("end it", [&] { person.Click(Find("end")); });
  desktop.ShowModal(form);
  EXPECT_EQ(form.log, (Words{"load", "activate"}));
  EXPECT_EQ(TopWindow(), nullptr);
}

TEST_F(FormsOnScreen, AreClosedByTheirCloseBox) {
  person.Does("close it", [] { QApplication::activeModalWidget()->windowHandle()->close(); });
  desktop.ShowModal(form);
  EXPECT_EQ(form.log, (Words{"load", "activate", "unload"}));
}

TEST_F(FormsOnScreen, PressDefaultAndCancelButtonByEnterAndEscape) {
  int asked = 0;
  form.on_ask = [&] { ++asked; };
  person.Does("press Enter", [&] {
    person.Click(Find("text"));
    person.Press(Qt::Key_Return);
    person.Press(Qt::Key_Enter);
    EXPECT_EQ(asked, 2);
    person.Press(Qt::Key_Escape);
  });
  desktop.ShowModal(form);
  EXPECT_FALSE(form.Visible());
  EXPECT_EQ(form.log.back(), "activate") << "hidden, not unloaded";
}

TEST_F(FormsOnScreen, PressTheButtonThatHasTheFocusByEnter) {
  form.on_ask = [] { ADD_FAILURE() << "not the default button"; };
  person.Does("press Enter on another button", [&] {
    form.end.SetFocus();
    person.Press(Qt::Key_Return);
  });
  desktop.ShowModal(form);
}

TEST_F(FormsOnScreen, LieOverOneAnotherAndOnlyTheTopOneTakesInput) {
  Asking second("Second");
  FormWindow* below = nullptr;
  form.on_ask = [&] { desktop.ShowModal(second); };
  person.Does("open the second", [&] { person.Click(Find("ask")); });
  person.Waits("it", [&] { return second.Visible(); });
  person.Does("try to use the first", [&] {
    below = desktop.WindowOf(form);
    EXPECT_EQ(TopWindow(), desktop.WindowOf(second));
    EXPECT_TRUE(below->isVisible());
    person.Click(below->findChild<QWidget*>(QLatin1String("end")));
    below->windowHandle()->close();
    person.Type("x");
    EXPECT_TRUE(form.Visible());
    EXPECT_EQ(form.text.Text(), "");
    EXPECT_EQ(second.text.Text(), "x");
  });
  person.Does("end the second", [&] { person.Click(Find("end")); });
  person.Waits("the first", [&] { return TopWindow() == below; });
  person.Does("use the first", [&] {
    form.text.SetFocus();
    person.Type("y");
    person.Click(Find("end"));
  });
  desktop.ShowModal(form);
  EXPECT_EQ(form.text.Text(), "y");
  EXPECT_EQ(form.log, (Words{"load", "activate", "activate"}));
}

TEST_F(FormsOnScreen, AreCoveredByTheBoxesOfTheirHandlers) {
  Words log;
  form.text.Change.Subscribe([&] {
    desktop.MessageBox("The value must be a digit.", Desktop::kCritical, "Dovanta2");
    form.text.SetFocus();
    log.push_back(form.text.Text());
  });
  person.Does("type a letter", [&] {
    person.Click(Find("text"));
    person.Type("x");
  });
  person.Answers("The value must be a digit.", "OK");
  person.Waits("the form", [&] { return !log.empty(); });
  person.Does("type another", [&] { person.Type("y"); });
  person.Answers("The value must be a digit.", "OK");
  Show(form);
  EXPECT_EQ(log, (Words{"x", "xy"}));
}

TEST_F(FormsOnScreen, HandOnTheErrorsOfTheirHandlers) {
  form.on_ask = [] { throw std::runtime_error("a handler's"); };
  person.Does("press", [&] { person.Click(Find("ask")); });
  EXPECT_THROW(desktop.ShowModal(form), std::runtime_error);
  EXPECT_EQ(desktop.WindowOf(form), nullptr);
}

TEST_F(FormsOnScreen, ComeToTheFrontWhenTheyAsk) {
  person.Does("look", [&] {
    desktop.SetForegroundWindow(form);
    EXPECT_EQ(QGuiApplication::focusWindow(), TopWindow()->windowHandle());
  });
  Show(form);
  desktop.SetForegroundWindow(form);  // no longer shown: nothing happens
}

}  // namespace
}  // namespace mirelo::qt
