#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "forms/layout/box_builder.h"

namespace mirelo::windows {

class Views;

// Makes a window of Windows' own kinds for each control of a form. What Windows has no kind for, as grids of
// cells that are ticked, is painted.
class ControlMaker final : public forms::layout::BoxMaker {
 public:
  explicit ControlMaker(Views& views) : views_(views) {}

  using Box = forms::layout::Box;
  Box MakeBox(forms::Button& button) override;
  Box MakeBox(forms::CheckBox& box) override;
  Box MakeBox(forms::ComboBox& box) override;
  Box MakeBox(forms::Image& image) override;
  Box MakeBox(forms::Line& line) override;
  Box MakeBox(forms::ListBox& list) override;
  Box MakeBox(forms::ScrollBar& bar) override;
  Box MakeBox(forms::TextBox& box) override;
  Box MakeBox(forms::Label& label, const std::string& asks) override;
  Box MakeBox(forms::Grid& grid, const std::vector<std::int32_t>& usual_widths) override;
  Box MakeSpinBox(forms::TextBox& box, forms::ScrollBar& bar) override;
  Box MakeSwatchBox(forms::TextBox& box) override;
  Box MakeTabStrip(forms::Tab& tab) override;
  Box MakePanelHeading(forms::Panel& panel) override;
  Box MakePanelPicture(forms::Panel& panel) override;
  Box MakeWords(const std::string& text) override;
  Box MakeHeading(const std::string& text) override;
  Box MakeTitle(forms::Label& label) override;
  void OnPanel(const forms::Control* panel) override;
  void Called(const std::string& name) override;
  void MadePalette(const std::vector<forms::Control*>& cells, int rows, forms::Control* above) override;

 private:
  Box MakeField(forms::Label& label, const std::string& asks);
  Box MakeReadLabel(forms::Label& label, bool bold);
  Box MakeReadWords(const std::string& text, bool bold);

  Views& views_;
};

}  // namespace mirelo::windows
