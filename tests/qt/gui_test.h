#pragma once

#include <gtest/gtest.h>

#include <QWidget>
#include <string>

#include "adapters/qt/qt_desktop.h"
#include "adapters/qt/qt_loop.h"
#include "forms/form.h"
#include "qt/person.h"

namespace mirelo::qt {

// A screen that nobody sees, and a person who works at it.
class GuiTest : public ::testing::Test {
 protected:
  // Shows a form, has the person do everything, and closes the form by its close box unless that has been
  // done.
  void Show(forms::Form& form) {
    person.Waits("nothing more", [] { return true; });
    person.Does("close the form", [&form] {
      if (form.Visible()) TopWindow()->close();
    });
    desktop.ShowModal(form);
  }

  static QWidget* TopWindow() { return Person::TopWindow(); }

  // The widget of a control of the form on top.
  template <class Widget = QWidget>
  static Widget* Find(const std::string& control) {
    QWidget* top = QApplication::activeModalWidget();
    auto* widget = top == nullptr ? nullptr : top->findChild<Widget*>(QString::fromStdString(control));
    if (widget == nullptr) ADD_FAILURE() << "no such widget is shown: " << control;
    return widget;
  }

  QtLoop loop;
  QtDesktop desktop{loop};
  Person person{loop};
};

}  // namespace mirelo::qt
