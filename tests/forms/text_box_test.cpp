#include "forms/text_box.h"

#include "forms/control_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TextBoxTest : public ControlTest {
 protected:
  TextBoxTest() { Watch(box.Change, "Change"); }
  forms::TextBox box{form, "txtHTTPPort", nullptr, "16239"};
};

TEST_F(TextBoxTest, StartsWithItsTextOnTheWindowsBackground) {
  EXPECT_EQ(box.Text(), "16239");
  EXPECT_EQ(box.BackColor(), static_cast<std::int32_t>(0x80000005));
  EXPECT_FALSE(box.MultiLine());
  EXPECT_FALSE(box.Locked());
}

TEST_F(TextBoxTest, RaisesChangeWhenItsTextReallyChanges) {
  box.Text("16239");
  EXPECT_THAT(raised, IsEmpty());
  box.Change.Subscribe([&] { EXPECT_EQ(box.Text(), "1"); });
  box.Text("1");
  box.Text("1");
  EXPECT_THAT(raised, ElementsAre("Change"));
}

TEST_F(TextBoxTest, TakesWhatThePersonMakesOfItsText) {
  box.UserEdit("80");
  EXPECT_EQ(box.Text(), "80");
  EXPECT_TRUE(box.HasFocus());
  box.UserEdit("80");
  EXPECT_THAT(raised, ElementsAre("Change"));
}

TEST_F(TextBoxTest, RaisesChangeForEachCharacterThatIsTyped) {
  std::vector<std::string> texts;
  box.Change.Subscribe([&] { texts.push_back(box.Text()); });
  box.Text("");
  box.UserType("2\u00e9\u20ac");
  EXPECT_THAT(texts, ElementsAre("", "2", "2\u00e9", "2\u00e9\u20ac"));
}

TEST_F(TextBoxTest, GoesOnTypingBehindWhatItsHandlerMadeOfTheText) {
  box.Text("");
  box.Change.Subscribe([&] {
    if (box.Text() == "?") box.Text("_");
  });
  box.UserType("?a");
  EXPECT_EQ(box.Text(), "_a");
}

TEST_F(TextBoxTest, StopsTypingWhereItsHandlerDisablesIt) {
  box.Text("");
  box.Change.Subscribe([&] { box.Enabled(box.Text() != "ab"); });
  box.UserType("abcd");
  EXPECT_EQ(box.Text(), "ab");
}

TEST_F(TextBoxTest, IsNotEditedByAPersonWhileItIsLockedOrDisabled) {
  box.Locked(true);
  box.UserEdit("80");
  box.UserType("80");
  box.Locked(false);
  box.Enabled(false);
  box.UserEdit("80");
  box.UserType("80");
  EXPECT_EQ(box.Text(), "16239");
  EXPECT_FALSE(box.HasFocus());
  EXPECT_THAT(raised, IsEmpty());
}

TEST_F(TextBoxTest, TakesTextsOfTheProgramWhileItIsLocked) {
  box.Locked(true);
  box.Text("80");
  EXPECT_EQ(box.Text(), "80");
}

}  // namespace
}  // namespace mirelo::testing
