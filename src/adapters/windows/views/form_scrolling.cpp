// What of a form is seen where the screen is too low for all of it.

#include <algorithm>

#include "adapters/windows/views/form_window.h"

namespace mirelo::windows {

// The bar is there while it is of use.
void FormWindow::Lay() {
  RECT room{};
  ::GetClientRect(window_, &room);
  SCROLLINFO seen{};
  seen.cbSize = sizeof seen;
  seen.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
  seen.nMax = std::max(0, least_.height - 1);
  seen.nPage = static_cast<UINT>(room.bottom);
  scrolled_ = std::clamp<std::int32_t>(scrolled_, 0, std::max<std::int32_t>(0, least_.height - room.bottom));
  seen.nPos = scrolled_;
  const bool has_bar = (::GetWindowLongW(window_, GWL_STYLE) & WS_VSCROLL) != 0;
  if (has_bar || least_.height > room.bottom) ::SetScrollInfo(window_, SB_VERT, &seen, TRUE);
  ::GetClientRect(window_, &room);
  Put(box_, {0, -scrolled_, room.right, std::max<std::int32_t>(room.bottom, least_.height)});
}

void FormWindow::Scroll(std::int32_t to) {
  scrolled_ = to;
  Lay();
  ::InvalidateRect(window_, nullptr, TRUE);
}

void FormWindow::TakeScrolling(int code) {
  RECT room{};
  ::GetClientRect(window_, &room);
  SCROLLINFO dragged{};
  dragged.cbSize = sizeof dragged;
  dragged.fMask = SIF_TRACKPOS;
  switch (code) {
    case SB_LINEUP:
      return Scroll(scrolled_ - views_->letters().LineHeight());
    case SB_LINEDOWN:
      return Scroll(scrolled_ + views_->letters().LineHeight());
    case SB_PAGEUP:
      return Scroll(scrolled_ - room.bottom);
    case SB_PAGEDOWN:
      return Scroll(scrolled_ + room.bottom);
    case SB_TOP:
      return Scroll(0);
    case SB_BOTTOM:
      return Scroll(least_.height);
    case SB_THUMBTRACK:
      if (::GetScrollInfo(window_, SB_VERT, &dragged) != 0) Scroll(dragged.nTrackPos);
      return;
    default:
      return;
  }
}

// What the person uses next is to be seen.
void FormWindow::Reveal(const View& view) {
  RECT place{};
  RECT room{};
  ::GetWindowRect(view.window, &place);
  ::MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&place), 2);
  ::GetClientRect(window_, &room);
  const LONG below = place.bottom - room.bottom;
  const LONG above = place.top;
  if (below > 0) Scroll(scrolled_ + std::min(below, above));
  if (above < 0) Scroll(scrolled_ + above);
}

}  // namespace mirelo::windows
