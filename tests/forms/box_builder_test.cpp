#include "forms/layout/box_builder.h"

#include <gmock/gmock.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "forms/button.h"
#include "forms/form.h"
#include "forms/grid.h"
#include "forms/scroll_bar.h"
#include "forms/simple_controls.h"
#include "forms/tab.h"
#include "forms/text_box.h"

namespace mirelo::forms::layout {
namespace {

using ::testing::ElementsAre;

// Notes what it is to make, each a box of ten by ten pixels.
class NotingMaker final : public BoxMaker {
 public:
  Box MakeBox(forms::Button& control) override { return Note(control.Name()); }
  Box MakeBox(forms::CheckBox&) override { return Note("check"); }
  Box MakeBox(forms::ComboBox&) override { return Note("combo"); }
  Box MakeBox(forms::Image&) override { return Note("image"); }
  Box MakeBox(forms::Line&) override { return Note("line"); }
  Box MakeBox(forms::ListBox&) override { return Note("list"); }
  Box MakeBox(forms::ScrollBar&) override { return Note("bar"); }
  Box MakeBox(forms::TextBox& control) override { return Note(control.Name()); }
  Box MakeBox(forms::Label& control, const std::string& asks) override {
    return Note(control.Name() + (asks.empty() ? "" : " asks " + asks));
  }
  Box MakeBox(forms::Grid& control, const std::vector<std::int32_t>& usual_widths) override {
    return Note(control.Name() + " of " + std::to_string(usual_widths.size()));
  }
  Box MakeSpinBox(forms::TextBox& box, forms::ScrollBar& bar) override {
    return Note(box.Name() + "+" + bar.Name());
  }
  Box MakeSwatchBox(forms::TextBox& box) override { return Note("swatch " + box.Name()); }
  Box MakeTabStrip(forms::Tab& tab) override { return Note(tab.Name()); }
  Box MakePanelHeading(forms::Panel& panel) override { return Note("heading of " + panel.Name()); }
  Box MakePanelPicture(forms::Panel& panel) override { return Note("picture of " + panel.Name()); }
  Box MakeWords(const std::string& text) override { return Note("\"" + text + "\""); }
  Box MakeHeading(const std::string& text) override { return Note("heading " + text); }
  Box MakeTitle(forms::Label& label) override { return Note("title " + label.Name()); }
  void OnPanel(const forms::Control* panel) override { panel_ = panel == nullptr ? "" : panel->Name(); }
  void Called(const std::string& name) override { called_ = name; }
  void MadePalette(const std::vector<forms::Control*>& cells, int rows, forms::Control* above) override {
    palette = std::to_string(cells.size()) + " by " + std::to_string(rows) + " below " + above->Name();
  }

  std::vector<std::string> made;
  std::string palette;
  std::map<std::string, Place> places;

 private:
  Box Note(const std::string& what) {
    made.push_back((panel_.empty() ? "" : panel_ + ": ") + what +
                   (called_.empty() ? "" : " called " + called_));
    called_.clear();
    Box box{.kind = Box::Kind::Leaf};
    box.needs = [] { return Extent{10, 10}; };
    box.put = [this, what](const Place& place) { places[what] = place; };
    return box;
  }

  std::string panel_;
  std::string called_;
};

class Building : public ::testing::Test {
 protected:
  Box Build(FormLayout layout) {
    BoxBuilder builder(form, std::move(layout), Gaps{.between = 2, .margin = 5}, maker);
    Box box = builder.Build();
    first = builder.first();
    return box;
  }

  forms::Form form{"Form", "Form"};
  NotingMaker maker;
  const forms::Control* first = nullptr;
};

TEST_F(Building, MakesAFormWithoutALayoutFromAboveInItsOrder) {
  const forms::Button one(form, "one", nullptr);
  const forms::Button two(form, "two", nullptr);
  const Box box = Build({});
  EXPECT_THAT(maker.made, ElementsAre("one", "two"));
  EXPECT_EQ(Needed(box), (Extent{20, 32})) << "two, the gap between them, and the margin";
}

TEST_F(Building, MakesEachPartAsTheLayoutSays) {
  const forms::TextBox text(form, "text", nullptr);
  const forms::ScrollBar bar(form, "bar", nullptr, 0, 1);
  const forms::TextBox color(form, "color", nullptr);
  const forms::Label label(form, "label", nullptr);
  const forms::Label field(form, "field", nullptr);
  const forms::Grid grid(form, "grid", nullptr);
  const forms::Button button(form, "button", nullptr);
  Build({{"", Column({Title("label"), Row({Words("Number:"), Spin("text", "bar")}), Swatch("color"),
                      Asking(Control("field"), "Sure?"), WithUsualWidths(Control("grid"), {1, 2}),
                      Heading("Below:"), FocusedFirst(Called(Control("button"), "Go"))})}});
  EXPECT_THAT(maker.made, ElementsAre("title label", "\"Number:\"", "text+bar", "swatch color",
                                      "field asks Sure?", "grid of 2", "heading Below:", "button called Go"));
  EXPECT_EQ(first, &button);
}

TEST_F(Building, MakesTheCellsOfAPaletteRowByRowAndPutsThemColumnByColumn) {
  std::vector<std::unique_ptr<forms::Label>> cells;
  std::vector<Part> parts;
  for (const char* name : {"a1", "a2", "b1", "b2"}) {
    cells.push_back(std::make_unique<forms::Label>(form, name, nullptr));
    parts.push_back(Control(name));
  }
  const forms::Label none(form, "none", nullptr);
  const Box box = Build({{"", Column({Control("none"), Palette(std::move(parts), 2, "none")})}});
  EXPECT_THAT(maker.made, ElementsAre("none", "a1", "b1", "a2", "b2"));
  EXPECT_EQ(maker.palette, "4 by 2 below none");
  const Extent needs = Needed(box);
  Put(box, {0, 0, needs.width, needs.height});
  EXPECT_GT(maker.places["a2"].top, maker.places["a1"].top);
  EXPECT_EQ(maker.places["a2"].left, maker.places["a1"].left);
  EXPECT_GT(maker.places["b1"].left, maker.places["a1"].left);
  EXPECT_EQ(maker.places["b1"].top, maker.places["a1"].top);
}

TEST_F(Building, PutsWhatATabHoldsOntoItsPanels) {
  const forms::Button outside(form, "outside", nullptr);
  forms::Tab tab(form, "tab", nullptr, "One|Two");
  forms::Panel one(form, "one", &tab);
  const forms::Button first_button(form, "first", &one);
  forms::Panel two(form, "two", &tab);
  const forms::Button second_button(form, "second", &two);
  Build({});
  EXPECT_THAT(maker.made, ElementsAre("outside", "tab", "one: first", "two: second"));
}

TEST_F(Building, RefusesALayoutOfAnotherForm) {
  EXPECT_THROW(Build({{"", Column({Control("missing")})}}), RuntimeError);
}

}  // namespace
}  // namespace mirelo::forms::layout
