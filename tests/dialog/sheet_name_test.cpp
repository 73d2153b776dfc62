#include "automation/runtime_error.h"
#include "dialog/dialog_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The name of the vertical sheets, which stays one that a sheet can bear.
class SheetName : public DialogTest {
 protected:
  void ShowSettings(std::function<void(frmMirelo&)> acts) {
    Show([acts = std::move(acts)](frmMirelo& form) {
      form.C1TTickersSettings.UserSelect(kSettings);
      acts(form);
    });
  }
  static std::string Cleaned(Variant text, const std::string& characters) {
    const Variant answer = frmMirelo::RemoveBadSymbols(text, characters);
    EXPECT_EQ(answer, text) << "the text changes in place";
    return answer.ToText();
  }
};

TEST_F(SheetName, ShowsItsExampleWhileItIsTyped) {
  ShowSettings([](frmMirelo& form) {
    form.txtVerticalSheet.UserEdit("");
    form.txtVerticalSheet.UserType("a/b");
    EXPECT_EQ(form.txtVerticalSheet.Text(), "a_b");
    EXPECT_EQ(form.lblExampleSheet.Caption(), "a_b(Ticker)");
    EXPECT_THAT(CallStack(), ElementsAre("Mirelo.cMirelo.LoadFrmMirelo"));
  });
}

TEST_F(SheetName, LosesEachCharacterThatASheetCannotBear) {
  ShowSettings([](frmMirelo& form) {
    for (const char forbidden : std::string_view("=@#&$%^'!:\\/?*[]")) {
      SCOPED_TRACE(forbidden);
      form.txtVerticalSheet.UserEdit(std::string("x") + forbidden + "y" + forbidden);
      EXPECT_EQ(form.txtVerticalSheet.Text(), "x_y_");
    }
    form.txtVerticalSheet.UserEdit("a-b+c (d) {e} ~\"`.,;|<>");
    EXPECT_EQ(form.txtVerticalSheet.Text(), "a-b+c (d) {e} ~\"`.,;|<>");
  });
}

TEST_F(SheetName, KeepsItsBlanksAndShowsTheExampleWithoutThem) {
  ShowSettings([](frmMirelo& form) {
    form.txtVerticalSheet.UserEdit("  My Quotes ");
    EXPECT_EQ(form.txtVerticalSheet.Text(), "  My Quotes ");
    EXPECT_EQ(form.lblExampleSheet.Caption(), "My Quotes(Ticker)");
    form.txtVerticalSheet.UserEdit("");
    EXPECT_EQ(form.lblExampleSheet.Caption(), "(Ticker)");
  });
}

TEST_F(SheetName, IgnoresWhatFailsWhileItIsTyped) {
  ShowSettings([](frmMirelo& form) {
    int failures = 0;
    const auto cookie = form.txtVerticalSheet.Appearance.Subscribe([&] {
      if (form.txtVerticalSheet.Text() != "a_b") return;
      ++failures;
      throw Errors::OutOfMemory();
    });
    form.txtVerticalSheet.UserEdit("a/b");
    form.txtVerticalSheet.Appearance.Unsubscribe(cookie);
    EXPECT_EQ(failures, 1) << "as the cleaned name was put back";
    EXPECT_EQ(form.lblExampleSheet.Caption(), "a_b(Ticker)") << "the next statement ran";
  });
}

TEST_F(SheetName, IsCleanedInPlace) {
  EXPECT_EQ(Cleaned("A/B", "/"), "A_B");
  EXPECT_EQ(Cleaned("C:/temp", ":/"), "C__temp");
  EXPECT_EQ(Cleaned("no such character", "#"), "no such character");
  EXPECT_EQ(Cleaned("aAaA", "a"), "_A_A") << "by its case";
  EXPECT_EQ(Cleaned("a__b", "_"), "a__b");
  EXPECT_EQ(Cleaned("", "/"), "");
  EXPECT_EQ(Cleaned("A/B", ""), "A/B");
  EXPECT_EQ(Cleaned("é€/é", "€/"), "é__é");
  EXPECT_EQ(Cleaned(-1.5, "-"), "_1.5") << "a number as its text";
  EXPECT_THAT(CallStack(), IsEmpty());
}

}  // namespace
}  // namespace mirelo::testing
