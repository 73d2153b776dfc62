// One control of each kind, shown by the office and used by a person.

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>
#include <string>
#include <vector>

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

}  // namespace
}  // namespace mirelo::calc
