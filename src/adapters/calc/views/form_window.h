#pragma once

#include <com/sun/star/awt/Rectangle.hpp>
#include <com/sun/star/awt/XControl.hpp>
#include <com/sun/star/awt/XDialog2.hpp>
#include <com/sun/star/awt/XToolkit2.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/awt/XWindowPeer.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "adapters/calc/views/views.h"
#include "automation/event.h"
#include "forms/form.h"
#include "forms/layout/boxes.h"
#include "host/window_placement.h"

namespace mirelo::calc {

class OfficeLoop;

// A form as a dialog of the office's: it is seen while the form is visible, and its close box closes the
// form.
class FormWindow {
 public:
  // What the window asks of whoever shows it.
  struct Asked {
    // Asks the person a question above the window; true for yes.
    std::function<bool(const std::string& question)> question;
    // Whether nothing lies above the window, as a box does.
    std::function<bool()> is_on_top;
    // Is called when the form was ended, maybe from within a call of its own that waits.
    std::function<void()> ended = [] {};
  };

  // Neither form nor loop may end before the window. `above` is the window that it lies above; null for none.
  FormWindow(const css::uno::Reference<css::uno::XComponentContext>& context, forms::Form& form,
             OfficeLoop& loop, const css::uno::Reference<css::awt::XWindowPeer>& above, Asked asked);
  ~FormWindow();
  FormWindow(const FormWindow&) = delete;
  FormWindow& operator=(const FormWindow&) = delete;

  forms::Form& form() const { return form_; }
  // Whether it was ended while it was up, and a call of its is under way all the same.
  bool HasEnded() const { return running_ && !form_.Visible(); }
  const Views& views() const { return views_; }
  // Null once the window has gone with what it lay above.
  css::uno::Reference<css::awt::XWindowPeer> peer() const;

  // Lets the office wait for the person, with this window alone, until the form is hidden.
  void Run(const std::function<bool()>& hidden);
  // What it lies above goes: closes the form, and gives the window back.
  void Abandon();
  void ToFront() const;

  // The place of the window on the screen, and its size.
  host::WindowPlacement Placement() const;
  // A place off every screen is moved onto the nearest.
  void Place(const host::WindowPlacement& placement);

 private:
  void Open();
  void Listen();
  void PutControls() const;
  void Center() const;
  void PutOnScreen(const css::awt::Rectangle& wanted) const;
  void ShowForm();
  void ShowState();
  void ShowFocus();
  void FocusFirst() const;
  void FollowFocus(const View& view);
  void TakeClosing();
  void Leave() const noexcept;
  css::uno::Reference<css::awt::XWindow> window() const;

  forms::Form& form_;
  OfficeLoop& loop_;
  css::uno::Reference<css::uno::XComponentContext> context_;
  Asked asked_;
  css::uno::Reference<css::awt::XWindowPeer> above_;
  css::uno::Reference<css::awt::XControlModel> model_;
  Views views_;
  forms::layout::Box box_;
  forms::Control* first_ = nullptr;  // what the layout gives the focus to
  css::uno::Reference<css::awt::XDialog2> dialog_;
  css::uno::Reference<css::awt::XToolkit2> toolkit_;
  Event<>::Cookie subscription_;
  std::vector<std::pair<forms::Control*, Event<>::Cookie>> subscriptions_;
  forms::layout::Extent least_;              // in which all controls are seen
  const forms::Control* focused_ = nullptr;  // as the form says
  bool shown_ = false;
  bool running_ = false;
  bool closing_ = false;  // since the office runs the dialog
  bool escaped_ = false;  // by what has closed the dialog
};

}  // namespace mirelo::calc
