#pragma once

#include <functional>
#include <string>
#include <utility>

#include "forms/control.h"
#include "forms/control_visitor.h"

namespace mirelo::forms {

// A push button. An "&" in its caption marks the letter that presses it together with Alt.
class Button : public Control {
 public:
  Button(forms::Form& form, std::string name, Control* parent, std::string caption = "");
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  const std::string& Caption() const { return caption_; }
  void Caption(std::string caption) { Set(caption_, std::move(caption)); }
  // The picture it shows in place of a caption, by the name that views know it under.
  const std::string& Picture() const { return picture_; }
  void Picture(std::string picture) { Set(picture_, std::move(picture)); }

  // The button that Enter presses, and the one that Escape presses. One of each in a form.
  bool Default() const { return default_; }
  void Default(bool is_default) { Set(default_, is_default); }
  bool Cancel() const { return cancel_; }
  void Cancel(bool is_cancel) { Set(cancel_, is_cancel); }

  Event<> Click;

  void UserPress();

  // Calls the attendant in place of the click when the person presses the button. The attendant calls
  // `click`, which clicks it: once, several times or not at all. The form knows nothing of that.
  using Attendant = std::function<void(const std::function<void()>& click)>;
  void AttendWith(Attendant attendant) { attendant_ = std::move(attendant); }

 private:
  Attendant attendant_;
  std::string caption_;
  std::string picture_;
  bool default_ = false;
  bool cancel_ = false;
};

}  // namespace mirelo::forms
