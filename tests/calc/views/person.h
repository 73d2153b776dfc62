#pragma once

#include <gtest/gtest.h>

#include <com/sun/star/awt/XControl.hpp>
#include <com/sun/star/awt/XToolkitRobot.hpp>
#include <com/sun/star/awt/XWindowPeer.hpp>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>

#include "adapters/calc/office_loop.h"
#include "adapters/calc/views/calc_desktop.h"
#include "forms/form.h"

namespace mirelo::calc {

namespace css = com::sun::star;

// A person at the office, who does what the test says, one thing after the other, while a form is up. What
// reaches the office are events of mouse and keyboard, which its toolkit is asked to take for real ones.
//
//   person.Does("add a ticker", [&] { person.Type("txtTicker", "MSFT"); person.Click("ButAdd"); });
//   desktop.ShowModal(form);
//
// Someone for whom nothing happens for too long gives up: the test fails, and the form on top is closed.
class Person {
 public:
  Person(OfficeLoop& loop, CalcDesktop& desktop);
  ~Person();
  Person(const Person&) = delete;
  Person& operator=(const Person&) = delete;

  void Does(std::string what, std::function<void()> act);
  void Waits(std::string for_what, std::function<bool()> until);
  // Waits for a box that says `text`, and presses that button of it.
  void Answers(const std::string& text, const std::string& button);

  static bool IsBoxUp(const std::string& text);

  // What a person can do at once, to the form on top.
  void Click(const std::string& view) const;
  void ClickAt(const std::string& view, std::int32_t x, std::int32_t y) const;
  void Press(std::int16_t key, std::int16_t modifiers = 0, char16_t letter = 0) const;
  // Into what has the focus.
  void Type(const std::string& text) const;

  // A view of the form on top, by the name of its control.
  const View& Find(const std::string& view) const;
  // The text that it shows.
  std::string TextOf(const std::string& view) const;
  bool IsShown(const std::string& view) const;
  bool HasFocus(const std::string& view) const;
  FormWindow& Window() const;

 private:
  struct Step {
    std::string what;
    std::function<bool()> ready;
    std::function<void()> act;
  };
  bool IsFormInFront() const;
  void Tick();
  void GiveUp(const std::string& why);
  static std::string Report();

  OfficeLoop& loop_;
  CalcDesktop& desktop_;
  css::uno::Reference<css::awt::XToolkitRobot> robot_;
  std::deque<Step> steps_;
  OfficeLoop::Token timer_ = 0;
  OfficeLoop::Time last_done_;
  bool gave_up_ = false;
  int looked_ = 0;  // how often since what was done last
};

}  // namespace mirelo::calc
