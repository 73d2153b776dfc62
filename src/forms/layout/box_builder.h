#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "forms/control_visitor.h"
#include "forms/layout/boxes.h"
#include "forms/layout/layout.h"

namespace mirelo::forms {
class Control;
class Form;
}  // namespace mirelo::forms

namespace mirelo::forms::layout {

// What makes the windows of a form's controls, in a toolkit that wants to be told the place of each: each
// call makes one, and answers its place in a layout. The calls come in the order in which the eye goes over
// the form, which is that of the Tab key.
class BoxMaker {
 public:
  virtual ~BoxMaker() = default;

  virtual Box MakeBox(forms::Button& button) = 0;
  virtual Box MakeBox(forms::CheckBox& box) = 0;
  virtual Box MakeBox(forms::ComboBox& box) = 0;
  virtual Box MakeBox(forms::Image& image) = 0;
  virtual Box MakeBox(forms::Line& line) = 0;
  virtual Box MakeBox(forms::ListBox& list) = 0;
  virtual Box MakeBox(forms::ScrollBar& bar) = 0;
  virtual Box MakeBox(forms::TextBox& box) = 0;
  // One that can be clicked asks that when Enter is pressed on it; empty for nothing.
  virtual Box MakeBox(forms::Label& label, const std::string& asks) = 0;
  // `usual_widths` in twips: a column of one of them is at least as wide as its header.
  virtual Box MakeBox(forms::Grid& grid, const std::vector<std::int32_t>& usual_widths) = 0;
  // One box with arrows for the two. The arrows are the scroll bar's.
  virtual Box MakeSpinBox(forms::TextBox& box, forms::ScrollBar& bar) = 0;
  // A patch of the box's colour.
  virtual Box MakeSwatchBox(forms::TextBox& box) = 0;
  // The tabs' names, without what stands on the tabs.
  virtual Box MakeTabStrip(forms::Tab& tab) = 0;
  // A panel's text and picture, which stand above and beside what it holds.
  virtual Box MakePanelHeading(forms::Panel& panel) = 0;
  virtual Box MakePanelPicture(forms::Panel& panel) = 0;
  // Words of the layout's own; and those above what belongs together.
  virtual Box MakeWords(const std::string& text) = 0;
  virtual Box MakeHeading(const std::string& text) = 0;
  // A label as such a heading.
  virtual Box MakeTitle(forms::Label& label) = 0;

  // What is made from now on stands on this panel; null for the form itself.
  virtual void OnPanel(const forms::Control* panel) = 0;
  // What a screen reader is to call the control that is made next.
  virtual void Called(const std::string& /*name*/) {}
  // These cells stand in columns of `rows`, one after the other, below `above`, which may be null.
  virtual void MadePalette(const std::vector<forms::Control*>& /*cells*/, int /*rows*/,
                           forms::Control* /*above*/) {}
};

// How far things stand from one another, in pixels.
struct Gaps {
  std::int32_t between = 6;     // between parts
  std::int32_t of_fields = 10;  // between what a field is called and the field
  std::int32_t of_cells = 2;
  std::int32_t indent = 12;
  std::int32_t margin = 10;
};

// Has the controls of a form made, and answers the boxes that say where the form's layout puts them.
class BoxBuilder final : private forms::ControlVisitor {
 public:
  BoxBuilder(forms::Form& form, FormLayout layout, const Gaps& gaps, BoxMaker& maker)
      : form_(form), layout_(std::move(layout)), gaps_(gaps), maker_(maker) {}

  // Call once.
  Box Build();

  // The control that the layout gives the focus to; null for none.
  forms::Control* first() const { return first_; }

 private:
  Box Fill(const forms::Control* panel, const std::vector<forms::Control*>& controls);
  Box Make(const Part& part);
  Box MakeControl(const Part& part);
  Box MakeLines(const Part& part);
  Box MakePalette(const Part& part);
  Box MakeInLine(Box::Kind kind, const Part& part);

  template <class Kind>
  Kind& Find(const std::string& name) const;

  void Visit(forms::Button& button) override { made_ = maker_.MakeBox(button); }
  void Visit(forms::CheckBox& box) override { made_ = maker_.MakeBox(box); }
  void Visit(forms::ComboBox& box) override { made_ = maker_.MakeBox(box); }
  void Visit(forms::Grid& grid) override { made_ = maker_.MakeBox(grid, part_->usual_widths); }
  void Visit(forms::Image& image) override { made_ = maker_.MakeBox(image); }
  void Visit(forms::Label& label) override { made_ = maker_.MakeBox(label, part_->asks); }
  void Visit(forms::Line& line) override { made_ = maker_.MakeBox(line); }
  void Visit(forms::ListBox& list) override { made_ = maker_.MakeBox(list); }
  void Visit(forms::Panel& panel) override;
  void Visit(forms::ScrollBar& bar) override { made_ = maker_.MakeBox(bar); }
  void Visit(forms::Tab& tab) override;
  void Visit(forms::TextBox& box) override { made_ = maker_.MakeBox(box); }

  forms::Form& form_;
  FormLayout layout_;
  Gaps gaps_;
  BoxMaker& maker_;
  forms::Control* first_ = nullptr;
  const forms::Control* panel_ = nullptr;      // that is being filled
  const Part* part_ = nullptr;                 // of the control that is visited
  Box made_;                                   // by the visit that has just ended
  std::shared_ptr<std::int32_t> first_width_;  // of the lines of the panel that is being filled
};

}  // namespace mirelo::forms::layout
