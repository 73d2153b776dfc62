#pragma once

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "forms/control.h"

class QWidget;

namespace mirelo::qt {

class QtLoop;

// Keeps a widget like a control: it shows the control's values whenever they change, and what a person does
// to the widget goes to the control's user actions.
class View {
 public:
  // `show` brings the widget into line with the control. Neither control nor widget may end before the view.
  View(forms::Control& control, QWidget& widget, QtLoop& loop, std::function<void()> show);
  ~View();
  View(const View&) = delete;
  View& operator=(const View&) = delete;

  forms::Control& control() const { return control_; }
  QWidget& widget() const { return widget_; }

  void Show() const { show_(); }

  // For slots: runs the control's user action, then shows the control as it is now. The control may have
  // refused what the widget shows already. Errors go to the loop.
  void Act(const std::function<void()>& act) const;

 private:
  forms::Control& control_;
  QWidget& widget_;
  QtLoop& loop_;
  std::function<void()> show_;
  Event<>::Cookie subscription_;
};

// The views of a window.
class Views {
 public:
  explicit Views(QtLoop& loop) : loop_(loop) {}

  // Shows nothing before ShowAll: a widget that is told to be visible before it has a parent would be a
  // window of its own.
  View& Add(forms::Control& control, QWidget& widget, std::function<void()> show);
  void ShowAll() const;

  QtLoop& loop() const { return loop_; }
  // Null for a control that has no view.
  QWidget* WidgetOf(const forms::Control* control) const;
  // The control whose widget this is or lies in; null when there is none.
  forms::Control* ControlOf(QWidget* widget) const;

 private:
  QtLoop& loop_;
  std::vector<std::unique_ptr<View>> views_;
  std::unordered_map<const forms::Control*, QWidget*> widgets_;
  std::unordered_map<const QWidget*, forms::Control*> controls_;
};

// What all controls have: whether they can be seen and used, and the tool tip.
void ShowState(const forms::Control& control, QWidget& widget);

}  // namespace mirelo::qt
