#pragma once

#include <com/sun/star/awt/XWindowPeer.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/calc/views/form_window.h"
#include "host/desktop.h"

namespace mirelo::calc {

class OfficeLoop;

// The desktop of a person at an office: boxes and forms are dialogs of the office's above the document in
// front, or above the one that they are about. While one is up, only it takes what the person does there; the
// office goes on, and so do the loop's steps.
//
// A form that the person has ended says nothing more: boxes from calls of its that are still under way are
// answered as carefully as can be, unseen.
//
// A document that is closed meanwhile takes the forms above it along, as their close boxes would. One with a
// box above it refuses to be closed until the box was answered.
class CalcDesktop : public host::Desktop {
 public:
  using Frame = css::uno::Reference<css::frame::XFrame>;

  // The loop must outlive the desktop. `below` says which frame boxes and forms are about; where it says
  // none, that is the one in front.
  CalcDesktop(
      const css::uno::Reference<css::uno::XComponentContext>& context, OfficeLoop& loop,
      std::function<Frame()> below = [] { return Frame(); })
      : context_(context), loop_(loop), below_(std::move(below)) {}

  Answer MessageBox(const std::string& text, int style, const std::string& title) override;
  void ShowModal(forms::Form& form) override;
  // Nothing: an office has no bell that others may ring.
  void Beep() override {}
  void SetForegroundWindow(forms::Form& form) override;
  std::optional<host::WindowPlacement> GetWindowPlacement(forms::Form& form) override;
  bool SetWindowPlacement(forms::Form& form, const host::WindowPlacement& placement) override;
  std::optional<host::WindowPlacement> GetDesktopPlacement() override;
  int ShellExecuteA(const std::string& verb, const std::string& file) override;

  // Called when the person has closed the only open form, so that requests it waits for can be cancelled.
  std::function<void()> form_ended = [] {};

  // The window of a form that is being shown; null for another.
  FormWindow* WindowOf(const forms::Form& form) const;

 private:
  // Where a box or form is to lie: above the topmost form, else above the frame.
  css::uno::Reference<css::awt::XWindowPeer> Above() const;
  Frame FrameBelow() const;
  bool Asks(const std::string& question, const std::string& title);

  css::uno::Reference<css::uno::XComponentContext> context_;
  OfficeLoop& loop_;
  std::function<Frame()> below_;
  std::vector<FormWindow*> windows_;  // of the forms that are shown, the topmost last
  int boxes_ = 0;                     // that are up
};

}  // namespace mirelo::calc
