#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "automation/event.h"

namespace mirelo::forms {

class ControlVisitor;
class Form;

// A colour on forms: red in the low byte, or one of the desktop's own colours.
using Color = std::int32_t;
inline constexpr Color kWindowBackground = static_cast<Color>(0x80000005);
inline constexpr Color kFaceBackground = static_cast<Color>(0x8000000F);

// A control of a form, without a toolkit: the values that the form's routines read and set, and the handlers
// that a change of them raises. A view mirrors a control: it shows the model's values and turns what a person
// does into the model's user actions (the members named User...), which do nothing on a control that a person
// could not use.
//
// Setting a value raises the handler that a person's action raises, and only when the value really changes.
class Control {
 public:
  // Registers with the form; the order of construction is the tab order. `parent` is null for a child of the
  // form.
  Control(forms::Form& form, std::string name, Control* parent);
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  virtual void Accept(ControlVisitor& visitor) = 0;

  const std::string& Name() const { return name_; }
  forms::Form& Owner() const { return form_; }
  Control* Parent() const { return parent_; }
  const std::vector<Control*>& Children() const { return children_; }

  bool Enabled() const { return enabled_; }
  void Enabled(bool enabled) { Set(enabled_, enabled); }
  bool Visible() const { return visible_; }
  void Visible(bool visible) { Set(visible_, visible); }
  // Free text of the form's own.
  const std::string& Tag() const { return tag_; }
  void Tag(std::string tag) { tag_ = std::move(tag); }
  const std::string& ToolTipText() const { return tool_tip_; }
  void ToolTipText(std::string text) { Set(tool_tip_, std::move(text)); }
  Color BackColor() const { return back_color_; }
  void BackColor(Color color) { Set(back_color_, color); }

  // Moves the focus to this control. Error 5 when it or one of its parents is disabled or hidden. A control
  // on a tab that is not the current one can have the focus.
  void SetFocus();
  bool HasFocus() const;

  // Whether a person could use it now: it and all its parents are enabled, visible and not on a hidden tab,
  // and no other form is shown modally.
  bool IsUsable() const;

  // Whether a visible child can be seen. A tab strip shows the panel of its current tab only.
  virtual bool Shows(const Control& /*child*/) const { return true; }

  // Has the views draw the control again.
  void Refresh() { Appearance.Raise(); }

  // Raised when anything that a person can see has changed. For views.
  Event<> Appearance;

 protected:
  // Stores a new value and tells the views. True when it differed.
  template <class T>
  bool Set(T& field, T value) {
    if (field == value) return false;
    field = std::move(value);
    Appearance.Raise();
    return true;
  }

 private:
  forms::Form& form_;
  std::string name_;
  Control* parent_;
  std::vector<Control*> children_;
  bool enabled_ = true;
  bool visible_ = true;
  std::string tag_;
  std::string tool_tip_;
  Color back_color_ = kFaceBackground;
};

}  // namespace mirelo::forms
