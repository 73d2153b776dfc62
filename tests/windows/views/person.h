#pragma once

#include "adapters/windows/views/native.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "adapters/windows/views/form_window.h"
#include "adapters/windows/views/native_desktop.h"
#include "forms/form.h"

namespace mirelo::windows {

// A person at Windows, who does what the test says, one thing after the other, while a form is up. What
// reaches the windows are the messages that mouse and keyboard cause. Windows are found by their numbers.
//
//   person.Does("add a ticker", [&] { person.Type("MSFT"); person.Press(VK_RETURN); });
//   desktop.ShowModal(form);
//
// Someone for whom nothing happens for too long gives up: the test fails, and the form on top is closed.
class Person {
 public:
  explicit Person(NativeDesktop& desktop);
  ~Person();
  Person(const Person&) = delete;
  Person& operator=(const Person&) = delete;

  // When a form is up and no box over it.
  void Does(std::string what, std::function<void()> act);
  void Waits(std::string for_what, std::function<bool()> until);
  // Waits for a box that says `text`, and presses that button of it, by its number (IDYES).
  void Answers(const std::string& text, int button);

  // The box that is up and says `text`; null for none.
  static HWND Box(const std::string& text);

  // What a person can do at once, to the form on top.
  void Click(const std::string& control) const;
  void ClickAt(const std::string& control, std::int32_t x, std::int32_t y) const;
  void DoubleClickAt(const std::string& control, std::int32_t x, std::int32_t y) const;
  void Drag(const std::string& control, POINT from, POINT to) const;
  // Into what has the focus.
  static void Press(WPARAM key);
  static void PressWithAlt(wchar_t letter);
  static void Type(const std::string& text);
  // As from a menu of the window: all of the text at once.
  void Replace(const std::string& control, const std::string& text) const;
  void Choose(const std::string& control, int index) const;
  void Open(const std::string& tab, int place) const;

  // The window of a control of the form on top.
  HWND Find(const std::string& control) const;
  FormWindow& Window() const;
  // The text that it shows.
  std::string TextOf(const std::string& control) const;
  std::vector<std::string> Items(const std::string& list) const;
  bool IsShown(const std::string& control) const;
  bool IsEnabled(const std::string& control) const;
  bool IsTicked(const std::string& control) const;
  bool HasFocus(const std::string& control) const;
  RECT PlaceOf(const std::string& control) const;

 private:
  struct Step {
    std::string what;
    std::function<bool()> ready;
    std::function<void()> act;
  };
  static void CALLBACK OnTime(HWND, UINT, UINT_PTR, DWORD);
  void Tick();
  void ComeBack() const;
  void GiveUp(const std::string& why);
  void EndEverything() const;

  NativeDesktop& desktop_;
  UINT_PTR timer_ = 0;
  std::deque<Step> steps_;
  DWORD last_done_;
  bool gave_up_ = false;
};

}  // namespace mirelo::windows
