// Where a form's window is and is put.

#include <algorithm>
#include <com/sun/star/accessibility/XAccessible.hpp>
#include <com/sun/star/accessibility/XAccessibleComponent.hpp>
#include <com/sun/star/awt/PosSize.hpp>
#include <com/sun/star/awt/XToolkit.hpp>
#include <com/sun/star/awt/XTopWindow2.hpp>

#include "adapters/calc/views/form_window.h"

namespace mirelo::calc {

using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;
using host::WindowPlacement;

namespace {

// On the screen. Positions of the office's are those within the window that it lies above.
css::awt::Point CornerOf(const Reference<css::awt::XWindowPeer>& window) {
  const Reference<css::accessibility::XAccessible> accessible(window, UNO_QUERY);
  if (!accessible.is()) return {0, 0};
  const Reference<css::accessibility::XAccessibleComponent> place(accessible->getAccessibleContext(),
                                                                  UNO_QUERY);
  return place.is() ? place->getLocationOnScreen() : css::awt::Point(0, 0);
}

css::awt::Rectangle Within(css::awt::Rectangle window, const css::awt::Rectangle& screen) {
  window.Width = std::min(window.Width, screen.Width);
  window.Height = std::min(window.Height, screen.Height);
  window.X = std::clamp(window.X, screen.X, screen.X + screen.Width - window.Width);
  window.Y = std::clamp(window.Y, screen.Y, screen.Y + screen.Height - window.Height);
  return window;
}

}  // namespace

WindowPlacement FormWindow::Placement() const {
  WindowPlacement placement;
  if (!dialog_.is()) return placement;
  const Reference<css::awt::XTopWindow2> top(peer(), UNO_QUERY);
  if (top.is() && top->getIsMaximized()) placement.state = WindowPlacement::kMaximized;
  if (top.is() && top->getIsMinimized()) placement.state = WindowPlacement::kMinimized;
  const css::awt::Point corner = CornerOf(peer());
  const css::awt::Rectangle size = window()->getPosSize();
  placement.normal = {corner.X, corner.Y, corner.X + size.Width, corner.Y + size.Height};
  return placement;
}

void FormWindow::Place(const WindowPlacement& placement) {
  if (!dialog_.is()) return;
  const auto& wanted = placement.normal;
  const css::awt::Rectangle size = window()->getPosSize();
  const bool sizable = form_.BorderStyle() == forms::Form::Border::Sizable ||
                       form_.BorderStyle() == forms::Form::Border::SizableToolWindow;
  const std::int32_t width = sizable ? std::max(wanted.right - wanted.left, least_.width) : size.Width;
  const std::int32_t height = sizable ? std::max(wanted.bottom - wanted.top, least_.height) : size.Height;
  PutOnScreen({wanted.left, wanted.top, width, height});
}

void FormWindow::PutOnScreen(const css::awt::Rectangle& wanted) const {
  const css::awt::Rectangle screen = toolkit_->getWorkArea();
  const css::awt::Rectangle place = Within(wanted, screen);
  const css::awt::Point origin = above_.is() ? CornerOf(above_) : css::awt::Point(0, 0);
  window()->setPosSize(place.X - origin.X, place.Y - origin.Y, place.Width, place.Height,
                       css::awt::PosSize::POSSIZE);
}

// Over what is below, otherwise in the middle of the screen.
void FormWindow::Center() const {
  css::awt::Rectangle around = toolkit_->getWorkArea();
  if (above_.is()) {
    const css::awt::Point corner = CornerOf(above_);
    const css::awt::Rectangle size = Reference<css::awt::XWindow>(above_, UNO_QUERY_THROW)->getPosSize();
    around = {corner.X, corner.Y, size.Width, size.Height};
  }
  const css::awt::Rectangle size = window()->getPosSize();
  PutOnScreen({around.X + (around.Width - size.Width) / 2, around.Y + (around.Height - size.Height) / 2,
               size.Width, size.Height});
}

}  // namespace mirelo::calc
