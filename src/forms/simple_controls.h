#pragma once

#include <string>

#include "forms/control.h"
#include "forms/control_visitor.h"

namespace mirelo::forms {

// A panel that lays out its children.
class Panel : public Control {
 public:
  using Control::Control;
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  // A panel may carry a text of its own, shown as a heading.
  const std::string& Caption() const { return caption_; }
  void Caption(std::string caption) { Set(caption_, std::move(caption)); }
  // A picture beside its children, by the name that views know it under; empty for none.
  const std::string& Picture() const { return picture_; }
  void Picture(std::string picture) { Set(picture_, std::move(picture)); }

 private:
  std::string caption_;
  std::string picture_;
};

// A text that the person only reads. It can be clicked.
class Label : public Control {
 public:
  Label(forms::Form& form, std::string name, Control* parent, std::string caption = "")
      : Control(form, std::move(name), parent), caption_(std::move(caption)) {}
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  const std::string& Caption() const { return caption_; }
  void Caption(std::string caption) { Set(caption_, std::move(caption)); }
  // 0 none, 1 a fixed single line.
  int BorderStyle() const { return border_style_; }
  void BorderStyle(int style) { Set(border_style_, style); }

  Event<> Click;

  void UserClick() {
    if (IsUsable()) Click.Raise();
  }

 private:
  std::string caption_;
  int border_style_ = 0;
};

// A rule between groups of controls.
class Line : public Control {
 public:
  using Control::Control;
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }
};

// A picture, by the name that views know it under; empty for none.
class Image : public Control {
 public:
  Image(forms::Form& form, std::string name, Control* parent, std::string picture)
      : Control(form, std::move(name), parent), picture_(std::move(picture)) {}
  void Accept(ControlVisitor& visitor) override { visitor.Visit(*this); }

  const std::string& Picture() const { return picture_; }

 private:
  std::string picture_;
};

}  // namespace mirelo::forms
