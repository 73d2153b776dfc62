#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "adapters/calc/views/boxes_of_controls.h"
#include "adapters/calc/views/views.h"
#include "forms/layout/box_builder.h"

namespace mirelo::calc {

// Makes views of the office's kinds for the controls of a form.
class ControlMaker final : public forms::layout::BoxMaker {
 public:
  explicit ControlMaker(Views& views) : views_(views) {}

  using Box = forms::layout::Box;
  Box MakeBox(forms::Button& button) override { return calc::MakeBox(button, views_); }
  Box MakeBox(forms::CheckBox& box) override { return calc::MakeBox(box, views_); }
  Box MakeBox(forms::ComboBox& box) override { return calc::MakeBox(box, views_); }
  Box MakeBox(forms::Image& image) override { return calc::MakeBox(image, views_); }
  Box MakeBox(forms::Line& line) override { return calc::MakeBox(line, views_); }
  Box MakeBox(forms::ListBox& list) override { return calc::MakeBox(list, views_); }
  Box MakeBox(forms::ScrollBar& bar) override { return calc::MakeBox(bar, views_); }
  Box MakeBox(forms::TextBox& box) override { return calc::MakeBox(box, views_); }
  Box MakeBox(forms::Label& label, const std::string& asks) override {
    return calc::MakeBox(label, views_, asks);
  }
  Box MakeBox(forms::Grid& grid, const std::vector<std::int32_t>& usual_widths) override {
    return calc::MakeBox(grid, views_, usual_widths);
  }
  Box MakeSpinBox(forms::TextBox& box, forms::ScrollBar& bar) override {
    return calc::MakeSpinBox(box, bar, views_);
  }
  Box MakeSwatchBox(forms::TextBox& box) override { return calc::MakeSwatchBox(box, views_); }
  Box MakeTabStrip(forms::Tab& tab) override { return calc::MakeTabStrip(tab, views_); }
  Box MakePanelHeading(forms::Panel& panel) override { return calc::MakePanelHeading(panel, views_); }
  Box MakePanelPicture(forms::Panel& panel) override { return calc::MakePanelPicture(panel, views_); }
  Box MakeWords(const std::string& text) override { return calc::MakeWords(text, views_); }
  Box MakeHeading(const std::string& text) override { return calc::MakeHeading(text, views_); }
  Box MakeTitle(forms::Label& label) override { return calc::MakeTitle(label, views_); }
  void OnPanel(const forms::Control* panel) override { views_.page = panel; }

 private:
  Views& views_;
};

}  // namespace mirelo::calc
