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

namespace mirelo::calc {

class Views;

// Makes the views of a form's controls, in the order in which the eye goes over them, and the boxes that say
// where the form's layout puts them.
class FormBuilder final : private forms::ControlVisitor {
 public:
  FormBuilder(forms::Form& form, forms::layout::FormLayout layout, Views& views)
      : form_(form), layout_(std::move(layout)), views_(views) {}

  // Call once.
  forms::layout::Box Build();

  // The control that the layout gives the focus to; null for none.
  forms::Control* first() const { return first_; }

 private:
  using Box = forms::layout::Box;
  using Part = forms::layout::Part;

  Box Fill(const forms::Control* panel, const std::vector<forms::Control*>& controls);
  Box Make(const Part& part);
  Box MakeControl(const Part& part);
  Box MakeLines(const Part& part);
  Box MakePalette(const Part& part);
  Box MakeInLine(Box::Kind kind, const Part& part);

  template <class Kind>
  Kind& Find(const std::string& name) const;

  void Visit(forms::Button&) override;
  void Visit(forms::CheckBox&) override;
  void Visit(forms::ComboBox&) override;
  void Visit(forms::Grid&) override;
  void Visit(forms::Image&) override;
  void Visit(forms::Label&) override;
  void Visit(forms::Line&) override;
  void Visit(forms::ListBox&) override;
  void Visit(forms::Panel&) override;
  void Visit(forms::ScrollBar&) override;
  void Visit(forms::Tab&) override;
  void Visit(forms::TextBox&) override;

  forms::Form& form_;
  forms::layout::FormLayout layout_;
  Views& views_;
  forms::Control* first_ = nullptr;
  const Part* part_ = nullptr;                 // of the control that is visited
  Box made_;                                   // by the visit that has just ended
  std::shared_ptr<std::int32_t> first_width_;  // of the lines of the panel that is being filled
};

}  // namespace mirelo::calc
