#pragma once

#include <string>
#include <vector>

#include "automation/text.h"
#include "forms/button.h"
#include "forms/check_box.h"
#include "forms/combo_box.h"
#include "forms/form.h"
#include "forms/grid.h"
#include "forms/list_box.h"
#include "forms/scroll_bar.h"
#include "forms/simple_controls.h"
#include "forms/tab.h"
#include "forms/text_box.h"

namespace mirelo::testing {

// What can be told of any control: its kind, and the text that it shows (of a list its entries, of a bar or
// box its value).
class ControlFacts : private forms::ControlVisitor {
 public:
  explicit ControlFacts(forms::Control& control) { control.Accept(*this); }

  std::string kind;
  std::string text;

 private:
  void Visit(forms::Button& button) override { Set("button", button.Caption()); }
  void Visit(forms::CheckBox& box) override { Set("check box", box.Caption()); }
  void Visit(forms::ComboBox& box) override { Set("combo", box.Text()); }
  void Visit(forms::Grid& /*grid*/) override { Set("grid", ""); }
  void Visit(forms::Image& /*image*/) override { Set("image", ""); }
  void Visit(forms::Label& label) override { Set("label", label.Caption()); }
  void Visit(forms::Line& /*line*/) override { Set("line", ""); }
  void Visit(forms::ListBox& list) override { Set("list box", Join(list.Items(), ",")); }
  void Visit(forms::Panel& panel) override { Set("panel", panel.Caption()); }
  void Visit(forms::ScrollBar& bar) override { Set("scroll bar", std::to_string(bar.Value())); }
  void Visit(forms::Tab& tab) override { Set("tab", Join(tab.Captions(), "|")); }
  void Visit(forms::TextBox& box) override { Set("text box", box.Text()); }

  void Set(const char* its_kind, std::string its_text) {
    kind = its_kind;
    text = std::move(its_text);
  }
};

// What a control holds for the person to change: a check box's tick as "0" or "1", another's text.
inline std::string ValueOf(forms::Control& control) {
  if (const auto* box = dynamic_cast<forms::CheckBox*>(&control)) return std::to_string(box->Value());
  return ControlFacts(control).text;
}

}  // namespace mirelo::testing
