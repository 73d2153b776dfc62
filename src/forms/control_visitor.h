#pragma once

namespace mirelo::forms {

class Button;
class CheckBox;
class ComboBox;
class Grid;
class Image;
class Label;
class Line;
class ListBox;
class Panel;
class ScrollBar;
class Tab;
class TextBox;

// Tells the kinds of control apart: what a view implements to show each in its own way.
class ControlVisitor {
 public:
  virtual ~ControlVisitor() = default;
  virtual void Visit(Button&) = 0;
  virtual void Visit(CheckBox&) = 0;
  virtual void Visit(ComboBox&) = 0;
  virtual void Visit(Grid&) = 0;
  virtual void Visit(Image&) = 0;
  virtual void Visit(Label&) = 0;
  virtual void Visit(Line&) = 0;
  virtual void Visit(ListBox&) = 0;
  virtual void Visit(Panel&) = 0;
  virtual void Visit(ScrollBar&) = 0;
  virtual void Visit(Tab&) = 0;
  virtual void Visit(TextBox&) = 0;
};

}  // namespace mirelo::forms
