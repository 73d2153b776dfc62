#include "adapters/calc/views/calc_desktop.h"

#include <algorithm>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XToolkit.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XFrames.hpp>
#include <com/sun/star/lang/DisposedException.hpp>

#include "adapters/calc/office_loop.h"
#include "adapters/calc/views/failure.h"
#include "adapters/calc/views/frame_watch.h"
#include "forms/form.h"

namespace mirelo::calc {

using css::uno::Reference;
using css::uno::UNO_QUERY;

void CalcDesktop::ShowModal(forms::Form& form) {
  try {
    const FormWindow::Asked asked{
        [this, &form](const std::string& question) { return Asks(question, form.Caption()); },
        [this, &form] { return boxes_ == 0 && !windows_.empty() && &windows_.back()->form() == &form; },
        [this] {
          if (windows_.size() == 1) form_ended();
        }};
    FormWindow window(context_, form, loop_, Above(), asked);
    // Known before the form is loaded: loading may put it somewhere.
    struct Known {
      Known(std::vector<FormWindow*>& all, FormWindow& own) : windows(all) { windows.push_back(&own); }
      ~Known() { windows.pop_back(); }
      std::vector<FormWindow*>& windows;
    } const known(windows_, window);
    const FrameWatch watch(FrameBelow(), [&window] { window.Abandon(); });
    forms::ShowModal(form, [&](const std::function<bool()>& hidden) { window.Run(hidden); });
  } catch (const css::uno::Exception& failure) {
    throw ToolkitFailed(failure);
  }
}

void CalcDesktop::SetForegroundWindow(forms::Form& form) {
  if (const FormWindow* window = WindowOf(form)) window->ToFront();
}

std::optional<host::WindowPlacement> CalcDesktop::GetWindowPlacement(forms::Form& form) {
  const FormWindow* window = WindowOf(form);
  if (window == nullptr) return std::nullopt;
  return window->Placement();
}

bool CalcDesktop::SetWindowPlacement(forms::Form& form, const host::WindowPlacement& placement) {
  FormWindow* window = WindowOf(form);
  if (window == nullptr) return false;
  window->Place(placement);
  return true;
}

std::optional<host::WindowPlacement> CalcDesktop::GetDesktopPlacement() {
  const css::awt::Rectangle area =
      Reference<css::awt::XToolkit>(css::awt::Toolkit::create(context_), css::uno::UNO_QUERY_THROW)
          ->getWorkArea();
  host::WindowPlacement placement;
  placement.normal = {area.X, area.Y, area.X + area.Width, area.Y + area.Height};
  return placement;
}

FormWindow* CalcDesktop::WindowOf(const forms::Form& form) const {
  const auto window = std::find_if(windows_.rbegin(), windows_.rend(),
                                   [&](const FormWindow* shown) { return &shown->form() == &form; });
  return window == windows_.rend() ? nullptr : *window;
}

// The one that was told; else that which has the focus, or had it last. An office without a screen gives it
// to none.
CalcDesktop::Frame CalcDesktop::FrameBelow() const {
  if (Frame told = below_(); told.is() && told->getContainerWindow().is()) return told;
  const Reference<css::frame::XDesktop2> desktop = css::frame::Desktop::create(context_);
  const Reference<css::frame::XFrame> current = desktop->getCurrentFrame();
  if (current.is()) return current;
  const Reference<css::container::XIndexAccess> all(desktop->getFrames(), css::uno::UNO_QUERY_THROW);
  if (all->getCount() == 0) return {};
  return {all->getByIndex(all->getCount() - 1), UNO_QUERY};
}

Reference<css::awt::XWindowPeer> CalcDesktop::Above() const {
  if (!windows_.empty() && windows_.back()->form().Visible() && windows_.back()->peer().is())
    return windows_.back()->peer();
  const Frame frame = FrameBelow();
  if (!frame.is()) return {};
  return {frame->getContainerWindow(), UNO_QUERY};
}

bool CalcDesktop::Asks(const std::string& question, const std::string& title) {
  return MessageBox(question, kYesNo, title) == Answer::Yes;
}

}  // namespace mirelo::calc
