#pragma once

#include "adapters/windows/views/native.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "adapters/windows/views/control_maker.h"
#include "adapters/windows/views/form_keys.h"
#include "adapters/windows/views/others_disabled.h"
#include "adapters/windows/views/pictures.h"
#include "adapters/windows/views/views.h"
#include "automation/event.h"
#include "forms/form.h"
#include "forms/layout/boxes.h"
#include "host/window_placement.h"

namespace mirelo::windows {

class WindowLoop;

// A form as a dialog of Windows': it is seen while the form is visible, and its close box closes the form.
class FormWindow {
 public:
  // Error 445 where there is no desktop. Neither form nor loop may end before the window. `above` is the
  // window that it lies above; null for none. `ask` asks the person a question above this window.
  FormWindow(forms::Form& form, WindowLoop& loop, HWND above,
             std::function<bool(const std::string& question)> ask);
  ~FormWindow();
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;

  forms::Form& form() const { return form_; }
  const Views& views() const { return *views_; }
  // Null once Windows has taken it away, with what it lay above.
  HWND window() const { return window_; }

  // The place of the window on the screen.
  host::WindowPlacement Placement() const;
  // A place off every screen is moved onto the nearest.
  void Place(const host::WindowPlacement& placement);

 private:
  static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  std::optional<LRESULT> Handle(UINT message, WPARAM first, LPARAM second);
  void Create(HWND above);
  void BuildControls(std::function<bool(const std::string& question)> ask);
  void Subscribe();
  void Destroy();

  void TakeKey(const MSG& key);
  bool TakeLetter(wchar_t letter);
  void TurnPages(int step);
  void TakeCommand(int number, int code, HWND from);
  void TakeClosing();
  void TakeSize(WPARAM how);
  void TakeDots(unsigned dots_per_inch, const RECT& place);
  std::optional<LRESULT> ColorOf(HDC context, HWND child);

  void PutControls();
  void Fit();
  void Lay();
  void Scroll(std::int32_t to);
  void TakeScrolling(int code);
  void Reveal(const View& view);
  std::int32_t BarWidth() const;
  void Center(HWND around) const;
  void PutOnScreen(const RECT& wanted) const;
  forms::layout::Extent FrameExtent() const;
  forms::layout::Extent ScreenExtent() const;
  void ShowForm();
  void ShowState();
  void ShowVisible();
  void ShowFocus();
  void FocusFirst() const;
  void FollowFocus(const View& view);

  forms::Form& form_;
  WindowLoop& loop_;
  HWND window_ = nullptr;
  std::unique_ptr<Views> views_;
  std::unique_ptr<ControlMaker> maker_;
  std::optional<FormKeys> keys_;
  std::optional<OthersDisabled> others_;
  Icon icon_;
  forms::layout::Box box_;
  unsigned dots_per_inch_ = 96;
  forms::Control* first_ = nullptr;  // what the layout gives the focus to
  forms::layout::Extent least_;      // of what is inside of the frame
  std::int32_t scrolled_ = 0;        // so far down, where the screen is lower than `least_`
  Event<>::Cookie subscription_ = 0;
  std::vector<std::pair<forms::Control*, Event<>::Cookie>> subscriptions_;
  const forms::Control* focused_ = nullptr;  // as the form says
  bool shown_ = false;
  bool ready_ = false;  // the controls are there
};

}  // namespace mirelo::windows
