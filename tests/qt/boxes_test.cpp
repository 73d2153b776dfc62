// Boxes that ask for a choice or a file, and the line above a form.

#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <filesystem>
#include <fstream>

#include "adapters/qt/choice_box.h"
#include "adapters/qt/file_box.h"
#include "adapters/qt/top_line.h"
#include "forms/button.h"
#include "forms/text_box.h"
#include "qt/gui_test.h"
#include "qt/walk.h"
#include "support/temp_directory.h"

namespace mirelo::qt {
namespace {

namespace fs = std::filesystem;

constexpr FileKind kTables{"Workbooks (*.xlsx)", "xlsx"};

class AskingBoxes : public GuiTest {
 protected:
  std::optional<std::size_t> Choose() {
    return ShowChoiceBox(loop, nullptr, {"Which?", "Title", host::Desktop::kInformation},
                         {"This", "That..."});
  }
  static QFileDialog& FileBox() { return *qobject_cast<QFileDialog*>(QApplication::activeModalWidget()); }
  void WaitsForFileBox() {
    person.Waits("the box",
                 [] { return qobject_cast<QFileDialog*>(QApplication::activeModalWidget()) != nullptr; });
  }
  static void TypeName(const std::string& name) {
    auto* const box = FileBox().findChild<QLineEdit*>(QLatin1String("fileNameEdit"));
    box->setFocus();
    box->selectAll();
    Person::Type(name);
    Person::Press(Qt::Key_Return);
  }

  testing::TempDirectory folder;
};

TEST_F(AskingBoxes, AnswerWhichChoiceWasMade) {
  person.Answers("Which?", "This");
  EXPECT_EQ(Choose(), 0U);
  person.Answers("Which?", "That...");
  EXPECT_EQ(Choose(), 1U);
}

TEST_F(AskingBoxes, AnswerNothingWhenTheyAreCancelledOrClosed) {
  person.Answers("Which?", "Cancel");
  EXPECT_EQ(Choose(), std::nullopt);
  person.Does("press Escape", [] { Person::Press(Qt::Key_Escape); });
  EXPECT_EQ(Choose(), std::nullopt);
  person.Does("close it", [] { TopWindow()->close(); });
  EXPECT_EQ(Choose(), std::nullopt);
}

TEST_F(AskingBoxes, TakeTheFirstChoiceAtEnter) {
  person.Does("press Enter", [] { Person::Press(Qt::Key_Return); });
  EXPECT_EQ(Choose(), 0U);
}

TEST_F(AskingBoxes, AskForAFileThatIsThere) {
  std::ofstream(folder / "mine.xlsx") << "x";
  std::ofstream(folder / "other.txt") << "x";
  WaitsForFileBox();
  person.Does("name it", [&] {
    EXPECT_EQ(FileBox().directory().path().toStdString(), folder.path().string());
    EXPECT_EQ(FileBox().nameFilters(), QStringList(QLatin1String("Workbooks (*.xlsx)")));
    TypeName("mine.xlsx");
  });
  EXPECT_EQ(AskForFile(loop, nullptr, "Open", kTables, folder.path()), folder / "mine.xlsx");
}

TEST_F(AskingBoxes, AskForANameAndSayNothingOfAFileThatIsThere) {
  std::ofstream(folder / "mine.xlsx") << "x";
  WaitsForFileBox();
  person.Does("name it", [] {
    EXPECT_EQ(FileBox().findChild<QLineEdit*>(QLatin1String("fileNameEdit"))->text(),
              QLatin1String("quotes.xlsx"));
    TypeName("mine");
  });
  EXPECT_EQ(AskForNewFile(loop, nullptr, "New", kTables, folder.path(), "quotes.xlsx"), folder / "mine.xlsx");
}

TEST_F(AskingBoxes, OfFilesAnswerNothingWhenTheyAreCancelled) {
  WaitsForFileBox();
  person.Does("press Escape", [] { Person::Press(Qt::Key_Escape); });
  EXPECT_EQ(AskForFile(loop, nullptr, "Open", kTables, folder.path()), std::nullopt);
  WaitsForFileBox();
  person.Does("close it", [] { TopWindow()->close(); });
  EXPECT_EQ(AskForNewFile(loop, nullptr, "New", kTables, folder.path(), "quotes.xlsx"), std::nullopt);
}

// As for a program that a menu has started, whose own folder nobody chose.
TEST_F(AskingBoxes, OfFilesBeginAtHomeWhereTheirFolderIsGone) {
  WaitsForFileBox();
  person.Does("look and cancel", [] {
    EXPECT_NE(FileBox().directory(), QDir::current());
    EXPECT_TRUE(FileBox().directory().path().startsWith(QDir::homePath()));
    Person::Press(Qt::Key_Escape);
  });
  AskForFile(loop, nullptr, "Open", kTables, folder / "gone");
}

class FormBelowLine : public forms::Form {
 public:
  FormBelowLine() : Form("FormBelowLine", "A form") {
    Design(3000, 3000, Border::Sizable);
    add.Default(true);
  }
  forms::TextBox text{*this, "text", nullptr};
  forms::Button add{*this, "add", nullptr, "Add"};
};

class TopLines : public GuiTest {
 protected:
  FormBelowLine form;
};

TEST_F(TopLines, StandAboveTheirFormAndAreWholeInTheirToolTip) {
  const std::string text = "Go saves in /home/somebody/" + std::string(200, 'x') + "/quotes.xlsx";
  desktop.PutAbove("FormBelowLine", {text, "", {}});
  person.Does("look", [&] {
    EXPECT_EQ(Find("TopLineText")->toolTip().toStdString(), text);
    EXPECT_EQ(Find("TopLineText")->accessibleName().toStdString(), text);
    EXPECT_LT(PlaceInWindow(*Find("TopLineText")).bottom(), PlaceInWindow(*Find("text")).top());
    EXPECT_LT(TopWindow()->width(), 600) << "a long text makes no wide window";
    EXPECT_EQ(TopWindow()->findChild<QPushButton*>(QLatin1String("TopLineButton")), nullptr);
  });
  Show(form);
}

TEST_F(TopLines, OfOtherFormsAreNotShown) {
  desktop.PutAbove("Another", {"text", "Press", [] {}});
  person.Does("look",
              [] { EXPECT_EQ(TopWindow()->findChild<QWidget*>(QLatin1String("TopLineText")), nullptr); });
  Show(form);
}

TEST_F(TopLines, HaveAButtonThatMouseAndEnterPress) {
  int pressed = 0;
  int added = 0;
  form.add.Click.Subscribe([&] { ++added; });
  desktop.PutAbove("FormBelowLine", {"text", "Other", [&] { ++pressed; }});
  person.Does("press it", [&] {
    EXPECT_TRUE(Find("text")->hasFocus()) << "the form has the focus first";
    Person::Click(Find("TopLineButton"));
    EXPECT_EQ(pressed, 1);
    Person::Press(Qt::Key_Return);
    EXPECT_EQ(pressed, 2);
    EXPECT_EQ(added, 0);
    const auto way = WalkWithTab(*TopWindow());
    EXPECT_EQ(way.size(), 3U);
    ExpectInReadingOrder(way);
  });
  Show(form);
}

}  // namespace
}  // namespace mirelo::qt
