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
    person.Does("close the form", [] { TopWindow()->close(); });
    desktop.ShowModal(form);
    person.Forget();  // to close a form that has ended itself
  }

  static QWidget* TopWindow() { return Person::TopWindow(); }

  template <class Widget = QWidget>
  static Widget* Find(const std::string& control) {
    return Person::Find<Widget>(control);
  }

  QtLoop loop;
  QtDesktop desktop{loop};
  Person person{loop};
};

}  // namespace mirelo::qt
