#include "qt/person.h"

#include <gtest/gtest.h>

#include <QMessageBox>
#include <QPushButton>
#include <QWindow>
#include <QtTest/QtTestWidgets>
#include <chrono>
#include <utility>

#include "forms/form.h"

namespace mirelo::qt {

namespace {

constexpr std::chrono::seconds kPatience{20};
constexpr QtLoop::Milliseconds kPause{1};

bool on_its_way = false;

bool IsOfAPerson(const QEvent& event) {
  if (!event.spontaneous()) return false;
  switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
    case QEvent::Shortcut:
      return true;
    default:
      return false;
  }
}

QWindow& WindowOf(const QWidget& widget) { return *widget.window()->windowHandle(); }
QPoint PlaceInWindow(const QWidget& widget, QPoint place) { return widget.mapTo(widget.window(), place); }

}  // namespace

bool TestApplication::notify(QObject* receiver, QEvent* event) {
  if (!IsOfAPerson(*event)) return QApplication::notify(receiver, event);
  const bool former = std::exchange(on_its_way, false);
  const bool taken = QApplication::notify(receiver, event);
  on_its_way = former;
  return taken;
}

void TestApplication::Send(const std::function<void()>& send) {
  const bool former = std::exchange(on_its_way, true);
  send();
  on_its_way = former;
}

bool TestApplication::OnItsWay() { return on_its_way; }

Person::Person(QtLoop& loop) : loop_(loop), last_done_(std::chrono::steady_clock::now()) {
  timer_ = loop_.StartTimer(kPause, [this] { Tick(); });
}

Person::~Person() { loop_.StopTimer(timer_); }

void Person::Does(std::string what, std::function<void()> act) {
  // Windows that are to be closed are closed, and those that are to come have come.
  steps_.push_back({std::move(what), [] { return TopWindow() != nullptr; }, std::move(act)});
}

void Person::Waits(std::string for_what, std::function<bool()> until) {
  steps_.push_back({"wait for " + for_what, std::move(until), [] {}});
}

void Person::Answers(std::string text, std::string button) {
  const auto act = [text, button] {
    EXPECT_EQ(Box()->text().toStdString(), text);
    for (QAbstractButton* choice : Box()->buttons()) {
      if (choice->text().remove(QLatin1Char('&')).toStdString() == button) return Click(choice);
    }
    ADD_FAILURE() << "the box has no button " << button;
  };
  steps_.push_back({"answer the box: " + text, [] { return Box() != nullptr; }, act});
}

void Person::Tick() {
  timer_ = loop_.StartTimer(kPause, [this] { Tick(); });
  if (TestApplication::OnItsWay()) return;
  const auto now = std::chrono::steady_clock::now();
  if (gave_up_ || now - last_done_ > kPatience) return GiveUp();
  if (steps_.empty() || !steps_.front().ready()) return;
  last_done_ = now;
  const Step step = std::move(steps_.front());
  steps_.pop_front();
  step.act();
}

void Person::GiveUp() {
  if (!std::exchange(gave_up_, true)) {
    const QWidget* top = TopWindow();
    ADD_FAILURE() << "nothing happens, and the person wants to "
                  << (steps_.empty() ? "go home" : steps_.front().what) << "; on top is "
                  << (top == nullptr ? "nothing" : top->windowTitle().toStdString());
  }
  if (Box() != nullptr) return Box()->hide();
  if (forms::Form* form = forms::ActiveForm()) form->Hide();
}

void Person::Click(QWidget* widget) {
  if (widget == nullptr) {
    ADD_FAILURE() << "there is nothing to click";
    return;
  }
  Click(widget, widget->rect().center());
}

void Person::Click(QWidget* widget, QPoint place, Qt::MouseButton button) {
  TestApplication::Send(
      [&] { QTest::mouseClick(&WindowOf(*widget), button, {}, PlaceInWindow(*widget, place)); });
}

void Person::DoubleClick(QWidget* widget, QPoint place) {
  TestApplication::Send(
      [&] { QTest::mouseDClick(&WindowOf(*widget), Qt::LeftButton, {}, PlaceInWindow(*widget, place)); });
}

void Person::Drag(QWidget* widget, QPoint from, QPoint to) {
  QWindow& window = WindowOf(*widget);
  const QPoint middle = (from + to) / 2;
  TestApplication::Send([&] {
    QTest::mousePress(&window, Qt::LeftButton, {}, PlaceInWindow(*widget, from));
    QTest::mouseMove(&window, PlaceInWindow(*widget, middle));
    QTest::mouseMove(&window, PlaceInWindow(*widget, to));
    QTest::mouseRelease(&window, Qt::LeftButton, {}, PlaceInWindow(*widget, to));
  });
}

void Person::Type(const std::string& text) {
  for (const QChar letter : QString::fromStdString(text)) {
    const QWidget* top = TopWindow();
    if (top == nullptr) return;
    TestApplication::Send([&] { QTest::keyClick(&WindowOf(*top), letter.toLatin1()); });
  }
}

void Person::Press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  const QWidget* top = TopWindow();
  if (top == nullptr) return;
  TestApplication::Send([&] { QTest::keyClick(&WindowOf(*top), key, modifiers); });
}

QWidget* Person::TopWindow() {
  if (QWidget* popup = QApplication::activePopupWidget()) return popup;
  return QApplication::activeModalWidget();
}

QMessageBox* Person::Box() { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }

}  // namespace mirelo::qt
