// Where the controls of forms stand.

#include "forms/button.h"
#include "forms/control_test.h"
#include "forms/layout/layouts.h"
#include "forms/layout/panel.h"
#include "forms/scroll_bar.h"
#include "forms/text_box.h"

namespace mirelo::testing {
namespace {

using forms::layout::Part;

TEST(Layouts, NameOnlyFormsThatTheyAreMadeFor) {
  EXPECT_EQ(forms::layout::LayoutOf("frmMirelo").size(), 5U);
  EXPECT_EQ(forms::layout::LayoutOf("frmColor").size(), 1U);
  EXPECT_EQ(forms::layout::LayoutOf("frmErrorMessage").size(), 4U);
  EXPECT_TRUE(forms::layout::LayoutOf("Sample").empty());
}

class PanelLayout : public ControlTest {
 protected:
  Part Laid(const forms::layout::FormLayout& layout) const {
    return forms::layout::PanelOf(layout, "", form.Controls());
  }

  forms::TextBox number{form, "number", nullptr};
  forms::ScrollBar arrows{form, "arrows", nullptr, 10, 0};
  forms::Button button{form, "button", nullptr};
};

TEST_F(PanelLayout, PutsControlsBelowOneAnotherWithoutOne) {
  const Part all = Laid({});
  ASSERT_EQ(all.parts.size(), 2U);
  EXPECT_EQ(all.parts[1].name, "button");
  const Part& pair = all.parts[0].parts.at(0);
  EXPECT_EQ(pair.kind, Part::Kind::Spin);
  EXPECT_EQ(pair.name, "number");
  EXPECT_EQ(pair.other, "arrows");
}

TEST_F(PanelLayout, LosesNoControlThatItForgets) {
  const Part all = Laid({{"", forms::layout::Row({forms::layout::Control("button")})}});
  ASSERT_EQ(all.parts.size(), 2U);
  EXPECT_EQ(all.parts[0].parts.at(0).name, "button");
  EXPECT_EQ(all.parts[0].stretch, 1);
  EXPECT_EQ(all.parts[1].parts.at(0).name, "number");
}

TEST_F(PanelLayout, AddsNothingWhereItNamesAll) {
  using namespace forms::layout;
  const Part all = Laid({{"", Column({Spin("number", "arrows"), Unseen("button")})}});
  EXPECT_EQ(all.parts.size(), 1U);
}

}  // namespace
}  // namespace mirelo::testing
