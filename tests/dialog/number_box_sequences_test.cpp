#include <cmath>
#include <iterator>
#include <optional>
#include <random>
#include <string_view>

#include "automation/number.h"
#include "dialog/number_boxes_test.h"

namespace mirelo::testing {
namespace {

constexpr const char* kTexts[] = {"",     "0",     "5",    "-5",   " 7 ",    "+3",     "--3",   "7-",
                                  "10",   "11",    "100",  "101",  "2.5",    "0.5",    "1.",    ".",
                                  "-0.4", "1,0",   "3600", "3601", "3600.4", "3600.5", "32767", "32768",
                                  "1e5",  "1e400", "inf",  "abc",  "&HFF",   "&HFFFF", "1,000", "10.5"};
constexpr std::string_view kKeys = "0123456789.-+eE a,&H";

// A person who does anything at all at one of the boxes, the same things for the same seed.
class NumberBoxSequences : public NumberBoxesTest, public ::testing::WithParamInterface<unsigned> {
 protected:
  std::size_t Choose(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
  }

  // Answers what was done.
  std::string Act(forms::TextBox& text, forms::ScrollBar& bar) {
    switch (Choose(6)) {
      case 0: {
        const char* const whole = kTexts[Choose(std::size(kTexts))];
        text.UserEdit(whole);
        return std::string("entered ") + whole;
      }
      case 1:
      case 2: {
        const std::string key(1, kKeys[Choose(kKeys.size())]);
        text.UserType(key);
        return "typed " + key;
      }
      case 3:
        text.UserEdit(text.Text().substr(0, text.Text().size() - (text.Text().empty() ? 0 : 1)));
        return "deleted a character";
      case 4:
        Choose(2) == 0 ? bar.UserStepUp() : bar.UserStepDown();
        return "stepped";
      default:
        bar.UserDrag(static_cast<std::int32_t>(Choose(4000)) - 200);
        return "dragged";
    }
  }

 private:
  std::mt19937 random_{GetParam()};
};

TEST_P(NumberBoxSequences, NeverLeaveTheRangeWithoutAMessage) {
  ShowEach([&](frmMirelo& form, const NumberBox& box, forms::TextBox& text, forms::ScrollBar& bar) {
    std::string history;
    for (int i = 0; i < 300; ++i) {
      const std::string text_before = text.Text();
      const std::int32_t value_before = bar.Value();
      const std::size_t messages_before = desktop.boxes.size();
      history += Act(text, bar) + ", ";
      SCOPED_TRACE(history + "from \"" + text_before + "\" to \"" + text.Text() + "\"");

      const std::size_t messages = desktop.boxes.size() - messages_before;
      const std::optional<double> number = ParseNumber(text.Text());
      if (!number) {
        ASSERT_EQ(messages, text.Text() == text_before ? 0U : 1U);
        ASSERT_EQ(bar.Value(), value_before);
        continue;
      }
      ASSERT_EQ(messages, 0U);
      if (std::abs(*number) >= 32'767) {  // beyond what is held
        ASSERT_EQ(bar.Value(), value_before);
      } else {
        ASSERT_EQ(bar.Value(), std::nearbyint(*number));
        ASSERT_GE(bar.Value(), 0);
        ASSERT_LE(bar.Value(), box.highest);
      }
      ASSERT_EQ(form.ButUpDate.Enabled(), ParseNumber(form.txtSec.Text()) == 0.0);
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Seeds, NumberBoxSequences, ::testing::Range(1U, 21U));

}  // namespace
}  // namespace mirelo::testing
