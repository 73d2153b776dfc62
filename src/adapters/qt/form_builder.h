#pragma once

#include <QString>
#include <string>
#include <vector>

#include "forms/control_visitor.h"
#include "forms/layout/layout.h"

class QBoxLayout;
class QGridLayout;
class QLabel;
class QLayout;
class QWidget;

namespace mirelo::forms {
class Control;
class Form;
}  // namespace mirelo::forms

namespace mirelo::qt {

class Views;

// Makes the widgets of a form's controls and puts them where the form's layout says.
class FormBuilder final : private forms::ControlVisitor {
 public:
  FormBuilder(forms::Form& form, forms::layout::FormLayout layout, Views& views)
      : form_(form), layout_(std::move(layout)), views_(views) {}

  // Fills the window. Call once. The Tab key reaches the form behind `before`, which is null for none. What
  // is to have the focus first, if the layout says so; otherwise null.
  QWidget* Build(QWidget& window, QWidget* before);

 private:
  // A part as Qt lays it out: a widget, a layout, or a space.
  struct Item {
    QWidget* widget = nullptr;
    QLayout* layout = nullptr;
  };

  void OrderFocus(QWidget* before) const;
  void AlignFields() const;
  void Fill(QWidget& host, const std::string& panel, const std::vector<forms::Control*>& controls);

  Item Make(const forms::layout::Part& part);
  Item MakeControl(const forms::layout::Part& part);
  Item MakeFields(const forms::layout::Part& part);
  Item MakePalette(const forms::layout::Part& part);
  Item MakeWords(const forms::layout::Part& part);
  void Put(const Item& item, int stretch, QBoxLayout& into);
  void Put(const Item& item, int row, int column, QGridLayout& into);
  void PutAll(const forms::layout::Part& part, QBoxLayout& into);
  void Name(QWidget& widget, const forms::layout::Part& part);

  template <class Kind>
  Kind& Find(const std::string& name);
  QWidget* WidgetFor(forms::Control& control);
  QWidget* MakePanel(forms::Panel& panel);
  QWidget* MakeTab(forms::Tab& tab);

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
  std::vector<QWidget*> in_order_;  // of the controls, as the eye goes over them
  QWidget* first_ = nullptr;
  std::vector<QGridLayout*> grids_;                 // of fields, of the panel that is being filled
  std::vector<std::vector<QGridLayout*>> aligned_;  // and of each panel before
  QWidget* made_ = nullptr;                         // by the visit that has just ended
  // What has been written in front of the field that comes next.
  QString words_;
  QLabel* label_ = nullptr;
};

}  // namespace mirelo::qt
