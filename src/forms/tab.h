#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "forms/control.h"
#include "forms/control_visitor.h"

namespace mirelo::forms {

// A strip of tabs, each with one panel: the children of this control, in order. Only the current tab's panel
// can be seen.
class Tab : public Control {
 public:
  // Captions in one text, parted by "|"; "&" marks the letter that selects the tab together with Alt.
  Tab(forms::Form& form, std::string name, Control* parent, const std::string& captions);
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  const std::vector<std::string>& Captions() const { return captions_; }

  // From 0. Raises Click when it changes; error 380 for a tab that does not exist.
  std::int32_t CurrTab() const { return current_; }
  void CurrTab(std::int32_t tab);

  bool Shows(const Control& child) const override;

  Event<> Click;

  void UserSelect(std::int32_t tab);

 private:
  std::vector<std::string> captions_;
  std::int32_t current_ = 0;
};

}  // namespace mirelo::forms
