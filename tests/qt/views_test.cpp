// What a person does to each kind of control reaches its model, and what the model says is seen.

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

#include "forms/button.h"
#include "forms/check_box.h"
#include "forms/combo_box.h"
#include "forms/list_box.h"
#include "forms/scroll_bar.h"
#include "forms/simple_controls.h"
#include "forms/tab.h"
#include "forms/text_box.h"
#include "qt/gui_test.h"

namespace mirelo::qt {
namespace {

using Words = std::vector<std::string>;

// A form with one control of each kind.
class ViewedForm : public forms::Form {
 public:
  ViewedForm() : Form("Sample", "A sample") { Design(6000, 6000, Border::Sizable); }

  forms::TextBox name{*this, "name", nullptr};
  forms::CheckBox tick{*this, "tick", nullptr, "&Tick me"};
  forms::Button press{*this, "press", nullptr, "&Press me"};
  forms::ComboBox color{*this, "color", nullptr};
  forms::ComboBox fixed{*this, "fixed", nullptr, forms::ComboBox::Style::DropDownList};
  forms::ListBox list{*this, "list", nullptr};
  forms::TextBox number{*this, "number", nullptr, "5"};
  forms::ScrollBar arrows{*this, "arrows", nullptr, 10, 0};
  forms::Label label{*this, "label", nullptr, "Only words"};
  forms::Label field{*this, "field", nullptr};
  forms::TextBox report{*this, "report", nullptr};
};

class Controls : public GuiTest {
 protected:
  ViewedForm form;
};

TEST_F(Controls, ButtonIsPressedByMouseBlankKeyAndItsLetter) {
  int presses = 0;
  form.press.Click.Subscribe([&] { ++presses; });
  person.Does("click", [&] { person.Click(Find("press")); });
  person.Does("press blank", [&] { person.Press(Qt::Key_Space); });
  person.Does("press Alt+P", [&] { person.Press(Qt::Key_P, Qt::AltModifier); });
  person.Waits("the button to come up again", [&] { return presses == 3; });
  Show(form);
  EXPECT_EQ(presses, 3);
  EXPECT_EQ(form.ActiveControl(), &form.press);
}

TEST_F(Controls, DisabledOnesTakeNothing) {
  form.press.Click.Subscribe([] { FAIL(); });
  form.press.Enabled(false);
  form.tick.Enabled(false);
  person.Does("click", [&] {
    person.Click(Find("press"));
    person.Click(Find("tick"));
  });
  Show(form);
  EXPECT_EQ(form.tick.Value(), 0);
}

TEST_F(Controls, CheckBoxFollowsClicksAndItsModel) {
  person.Does("click", [&] { person.Click(Find("tick"), QPoint(8, Find("tick")->height() / 2)); });
  person.Does("look", [&] {
    EXPECT_EQ(form.tick.Value(), 1);
    EXPECT_TRUE(Find<QCheckBox>("tick")->isChecked());
    form.tick.Value(0);
    EXPECT_FALSE(Find<QCheckBox>("tick")->isChecked());
  });
  Show(form);
}

TEST_F(Controls, CheckBoxThatItsHandlerUnticksIsSeenUnticked) {
  form.tick.Click.Subscribe([&] { form.tick.Value(0); });
  person.Does("click", [&] { person.Click(Find("tick"), QPoint(8, Find("tick")->height() / 2)); });
  person.Does("look", [&] { EXPECT_FALSE(Find<QCheckBox>("tick")->isChecked()); });
  Show(form);
}

TEST_F(Controls, TextBoxRaisesAChangeForEachLetter) {
  Words changes;
  form.name.Change.Subscribe([&] { changes.push_back(form.name.Text()); });
  person.Does("type", [&] {
    person.Click(Find("name"));
    person.Type("abc");
    person.Press(Qt::Key_Backspace);
  });
  Show(form);
  EXPECT_EQ(changes, (Words{"a", "ab", "abc", "ab"}));
}

TEST_F(Controls, TextBoxShowsWhatItsHandlerMakesOfTheText) {
  form.name.Change.Subscribe([&] {
    if (form.name.Text() == "a/") form.name.Text("a_");
  });
  person.Does("type", [&] {
    person.Click(Find("name"));
    person.Type("a/b");
  });
  person.Does("look", [&] { EXPECT_EQ(Find<QLineEdit>("name")->text(), QLatin1String("a_b")); });
  Show(form);
  EXPECT_EQ(form.name.Text(), "a_b");
}

TEST_F(Controls, TextBoxKeepsThePlaceInTheMiddleOfATextThatIsEdited) {
  form.name.Text("ac");
  person.Does("type", [&] {
    person.Click(Find("name"));
    person.Press(Qt::Key_Home);
    person.Press(Qt::Key_Right);
    person.Type("b");
    person.Type("b");
  });
  Show(form);
  EXPECT_EQ(form.name.Text(), "abbc");
}

TEST_F(Controls, LockedTextBoxCanBeReadOnly) {
  form.report.MultiLine(true);
  form.report.Locked(true);
  form.report.Text("first\r\nsecond");
  person.Does("type", [&] {
    person.Click(Find("report"));
    person.Type("x");
  });
  person.Does("look", [&] {
    EXPECT_EQ(Find<QPlainTextEdit>("report")->toPlainText(), QLatin1String("first\nsecond"));
  });
  Show(form);
  EXPECT_EQ(form.report.Text(), "first\r\nsecond");
}

TEST_F(Controls, TextBoxOfSeveralLinesTakesThem) {
  form.report.MultiLine(true);
  person.Does("type", [&] {
    person.Click(Find("report"));
    person.Type("a");
    person.Press(Qt::Key_Return);
    person.Type("b");
  });
  Show(form);
  EXPECT_EQ(form.report.Text(), "a\r\nb");
}

TEST_F(Controls, ComboBoxTakesTypedTextAsItIs) {
  for (const char* item : {"Blue", "Green"}) form.color.AddItem(item);
  Words changes;
  form.color.Change.Subscribe([&] { changes.push_back(form.color.Text()); });
  person.Does("type", [&] {
    person.Click(Find<QComboBox>("color")->lineEdit());
    person.Type("bl");
  });
  person.Does("look", [&] { EXPECT_EQ(Find<QComboBox>("color")->currentText(), QLatin1String("bl")); });
  Show(form);
  EXPECT_EQ(changes, (Words{"b", "bl"}));
}

TEST_F(Controls, ComboBoxTakesTheChosenEntry) {
  for (const char* item : {"Blue", "Green", "None"}) {
    form.color.AddItem(item);
    form.fixed.AddItem(item);
  }
  int clicks = 0;
  form.color.Click.Subscribe([&] { ++clicks; });
  for (const char* name : {"color", "fixed"}) {
    person.Does("open the list", [&, name] {
      QWidget* box = Find(name);
      person.Click(box, QPoint(box->width() - 8, box->height() / 2));
    });
    person.Waits("the list", [] { return QApplication::activePopupWidget() != nullptr; });
    person.Does("choose", [&] {
      person.Press(Qt::Key_Down);
      person.Press(Qt::Key_Down);
      person.Press(Qt::Key_Return);
    });
    person.Waits("the list to close", [] { return QApplication::activePopupWidget() == nullptr; });
  }
  Show(form);
  EXPECT_NE(form.color.Text(), "");
  EXPECT_EQ(form.color.Text(), form.color.List(form.color.ListIndex()));
  EXPECT_EQ(clicks, 1);
  EXPECT_NE(form.fixed.Text(), "");
}

TEST_F(Controls, ComboBoxShowsItsModelsEntriesAndText) {
  person.Does("look", [&] {
    auto* box = Find<QComboBox>("color");
    for (const char* item : {"one", "two", "three"}) form.color.AddItem(item);
    form.color.RemoveItem(1);
    form.color.Text("another");
    EXPECT_EQ(box->count(), 2);
    EXPECT_EQ(box->itemText(1), QLatin1String("three"));
    EXPECT_EQ(box->currentText(), QLatin1String("another"));
    form.color.ListIndex(1);
    EXPECT_EQ(box->currentText(), QLatin1String("three"));
    form.color.Clear();
    EXPECT_EQ(box->count(), 0);
    EXPECT_EQ(box->currentText(), QLatin1String(""));
  });
  Show(form);
}

QPoint PlaceOf(QListWidget& list, int row) { return list.visualItemRect(list.item(row)).center(); }

TEST_F(Controls, ListBoxRaisesAClickForEachClickAndADoubleClick) {
  for (const char* item : {"a", "b", "c"}) form.list.AddItem(item);
  Words log;
  form.list.Click.Subscribe([&] { log.push_back("click " + std::to_string(form.list.ListIndex())); });
  form.list.DblClick.Subscribe([&] { log.push_back("double " + std::to_string(form.list.ListIndex())); });
  person.Does("click", [&] {
    auto* list = Find<QListWidget>("list");
    person.Click(list->viewport(), PlaceOf(*list, 1));
    person.Click(list->viewport(), PlaceOf(*list, 1));
  });
  person.Does("use the keys", [&] {
    person.Press(Qt::Key_Down);
    person.Press(Qt::Key_Home);
  });
  person.Does("double click", [&] {
    auto* list = Find<QListWidget>("list");
    person.DoubleClick(list->viewport(), PlaceOf(*list, 2));
  });
  Show(form);
  EXPECT_EQ(log, (Words{"click 1", "click 1", "click 2", "click 0", "click 2", "click 2", "double 2"}));
}

TEST_F(Controls, ListBoxShowsEntriesAndSelectionOfItsModel) {
  person.Does("look", [&] {
    auto* list = Find<QListWidget>("list");
    for (const char* item : {"a", "b", "c"}) form.list.AddItem(item);
    form.list.ListIndex(2);
    EXPECT_EQ(list->currentRow(), 2);
    form.list.RemoveItem(0);
    EXPECT_EQ(list->count(), 2);
    EXPECT_EQ(list->currentRow(), 1);
    form.list.ListIndex(-1);
    EXPECT_TRUE(list->selectedItems().isEmpty());
  });
  Show(form);
}

TEST_F(Controls, ArrowsOfANumberBoxMoveTheScrollBar) {
  form.arrows.Change.Subscribe([&] { form.number.Text(std::to_string(form.arrows.Value())); });
  form.arrows.Value(9);
  person.Does("press the arrows", [&] {
    QWidget* box = Find("number");
    const QPoint up(box->width() - 6, 6), down(box->width() - 6, box->height() - 6);
    person.Click(box, up);
    EXPECT_EQ(form.number.Text(), "10");
    person.Click(box, up);
    EXPECT_EQ(form.number.Text(), "10") << "the top is reached";
    person.Click(box, down);
    EXPECT_EQ(form.number.Text(), "9");
    person.Press(Qt::Key_Down);
    EXPECT_EQ(form.number.Text(), "8");
    person.Press(Qt::Key_PageDown);
    EXPECT_EQ(form.number.Text(), "0") << "no further than the foot";
  });
  Show(form);
}

TEST_F(Controls, NumberBoxTakesAnyText) {
  person.Does("type", [&] {
    person.Click(Find("number"), QPoint(8, 8));
    person.Press(Qt::Key_A, Qt::ControlModifier);
    person.Type("x1");
  });
  Show(form);
  EXPECT_EQ(form.number.Text(), "x1");
}

TEST_F(Controls, LabelThatCanBeClickedIsReachedByTheKeyboardToo) {
  Words log;
  ViewedForm other;
  forms::Label clickable(other, "clickable", nullptr);
  clickable.Click.Subscribe([&] { log.push_back("click"); });
  person.Does("click and press", [&] {
    person.Click(Find("clickable"));
    person.Press(Qt::Key_Space);
    person.Press(Qt::Key_Return);
  });
  Show(other);
  EXPECT_EQ(log, (Words{"click", "click", "click"}));
}

TEST_F(Controls, ShowWhatTheirModelsSay) {
  person.Does("look", [&] {
    form.press.Caption("New");
    form.press.ToolTipText("A tip");
    form.press.Default(true);
    EXPECT_EQ(Find<QPushButton>("press")->text(), QLatin1String("New"));
    EXPECT_EQ(Find("press")->toolTip(), QLatin1String("A tip"));
    EXPECT_TRUE(Find<QPushButton>("press")->isDefault());
    form.label.Caption("Other words");
    EXPECT_EQ(Find<QLabel>("label")->text(), QLatin1String("Other words"));
    form.label.Visible(false);
    EXPECT_FALSE(Find("label")->isVisible());
    form.Caption("Another title");
    EXPECT_EQ(TopWindow()->windowTitle(), QLatin1String("Another title"));
  });
  Show(form);
}

TEST_F(Controls, PassTheFocusInTheOrderOfTheForm) {
  Words order;
  person.Does("press Tab", [&] {
    for (int i = 0; i < 6; ++i) {
      order.push_back(form.ActiveControl() == nullptr ? "" : form.ActiveControl()->Name());
      person.Press(Qt::Key_Tab);
    }
  });
  Show(form);
  EXPECT_EQ(order, (Words{"name", "tick", "press", "color", "fixed", "list"}));
}

TEST_F(Controls, TakeTheFocusThatTheirFormGivesThem) {
  person.Does("look", [&] {
    form.number.SetFocus();
    EXPECT_TRUE(Find("number")->hasFocus() || Find("number")->isAncestorOf(QApplication::focusWidget()));
    person.Type("7");
  });
  Show(form);
  EXPECT_NE(form.number.Text().find('7'), std::string::npos);
}

TEST_F(Controls, AreNamedForScreenReaders) {
  form.press.Caption("");
  form.press.Picture("up");
  form.press.ToolTipText("Move up");
  person.Does("look", [&] { EXPECT_EQ(Find("press")->accessibleName(), QLatin1String("Move up")); });
  Show(form);
}

class Tabbed : public forms::Form {
 public:
  Tabbed() : Form("Tabbed", "Tabs") {}
  forms::Tab tabs{*this, "tabs", nullptr, "&First|&Second"};
  forms::Panel first{*this, "first", &tabs};
  forms::TextBox one{*this, "one", &first};
  forms::Panel second{*this, "second", &tabs};
  forms::TextBox two{*this, "two", &second};
};

class Tabs : public GuiTest {
 protected:
  Tabbed form;
};

TEST_F(Tabs, AreSelectedByMouseAndLetter) {
  Words log;
  form.tabs.Click.Subscribe([&] { log.push_back(std::to_string(form.tabs.CurrTab())); });
  person.Does("select", [&] {
    auto* bar = Find<QTabWidget>("tabs")->tabBar();
    person.Click(bar, bar->tabRect(1).center());
    EXPECT_TRUE(Find("two")->isVisible());
    EXPECT_FALSE(Find("one")->isVisible());
    person.Click(bar, bar->tabRect(1).center());
    person.Press(Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(Find("one")->isVisible());
  });
  Show(form);
  EXPECT_EQ(log, (Words{"1", "1", "0"}));
}

TEST_F(Tabs, FollowTheirModel) {
  int clicks = 0;
  form.tabs.Click.Subscribe([&] { ++clicks; });
  person.Does("look", [&] {
    form.tabs.CurrTab(1);
    EXPECT_EQ(Find<QTabWidget>("tabs")->currentIndex(), 1);
    EXPECT_TRUE(Find("two")->isVisible());
  });
  Show(form);
  EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace mirelo::qt
