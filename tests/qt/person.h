#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>
#include <deque>
#include <functional>
#include <stdexcept>
#include <string>

#include "adapters/qt/qt_loop.h"

class QAbstractButton;
class QAbstractItemView;
class QMessageBox;

namespace mirelo::qt {

// The application of the tests: it knows when an event of a person's is on its way, so that a person does one
// thing after the other, even though each of them may open a window in which the next is done.
class TestApplication final : public QApplication {
 public:
  TestApplication(int& argc, char** argv) : QApplication(argc, argv) {}
  bool notify(QObject* receiver, QEvent* event) override;

  // While `send` runs and what it sends has not arrived, OnItsWay answers true.
  static void Send(const std::function<void()>& send);
  static bool OnItsWay();
};

// A person at the screen, who does what the test says, one thing after the other, while the program waits in
// its loop. All that reaches the program are events of mouse and keyboard.
//
//   person.Does("add a ticker", [&] { person.Type("MSFT"); person.Press(Qt::Key_Return); });
//   person.Waits("the grid to show it", [&] { return ...; });
//   desktop.ShowModal(form);
//
// Someone for whom nothing happens for too long gives up: the test fails, and what is shown is closed.
class Person {
 public:
  explicit Person(QtLoop& loop);
  ~Person();
  Person(const Person&) = delete;
  Person& operator=(const Person&) = delete;

  void Does(std::string what, std::function<void()> act);
  void Waits(std::string for_what, std::function<bool()> until);
  // Waits for a message box that says `text`, and presses its button `button`.
  void Answers(std::string text, std::string button);

  // Leaves undone what has not been done.
  void Forget() { steps_.clear(); }

  // What a person can do at once. Widgets must be shown.
  static void Click(QWidget* widget);
  static void Click(QWidget* widget, QPoint place, Qt::MouseButton button = Qt::LeftButton);
  static void DoubleClick(QWidget* widget, QPoint place);
  static void Drag(QWidget* widget, QPoint from, QPoint to);
  static void Type(const std::string& text);
  static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

  // The window that takes what a person does; null when there is none.
  static QWidget* TopWindow();
  // The widget of a control of the form on top. The person gives up with an error when there is none.
  template <class Widget = QWidget>
  static Widget* Find(const std::string& control) {
    QWidget* top = QApplication::activeModalWidget();
    auto* widget = top == nullptr ? nullptr : top->findChild<Widget*>(QString::fromStdString(control));
    if (widget == nullptr) throw std::runtime_error("no such widget is shown: " + control);
    return widget;
  }
  // Null when no box is up.
  static QMessageBox* Box();

 private:
  struct Step {
    std::string what;
    std::function<bool()> ready;
    std::function<void()> act;
  };
  void Tick();
  void GiveUp();

  QtLoop& loop_;
  std::deque<Step> steps_;
  QtLoop::Token timer_ = 0;
  QtLoop::Time last_done_;
  bool gave_up_ = false;
};

}  // namespace mirelo::qt
