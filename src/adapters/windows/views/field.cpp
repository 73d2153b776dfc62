#include "adapters/windows/views/field.h"

#include <windowsx.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

#include "adapters/windows/views/color.h"
#include "adapters/windows/views/control_maker.h"
#include "automation/wide_text.h"

namespace mirelo::windows {

using forms::layout::Box;
using forms::layout::Extent;

std::optional<LRESULT> Field::Handle(UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      Paint();
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
    case WM_ENABLE:
      Repaint();
      return std::nullopt;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      pressed_ = true;
      ::SetFocus(window());
      ::SetCapture(window());
      return 0;
    case WM_LBUTTONUP:
      Release(second);
      return 0;
    case WM_CAPTURECHANGED:
      pressed_ = false;
      return 0;
    case WM_KEYDOWN:
      if (first != VK_SPACE) return std::nullopt;
      Click();
      return 0;
    default:
      return std::nullopt;
  }
}

void Field::Release(LPARAM place) {
  const bool pressed = std::exchange(pressed_, false);
  ::ReleaseCapture();
  const RECT room = Room();
  if (pressed && ::PtInRect(&room, {GET_X_LPARAM(place), GET_Y_LPARAM(place)}) != 0) Click();
}

void Field::Click() {
  if (const View* view = views_.ViewOf(&label_)) views_.Act(*view, [this] { label_.UserClick(); });
}

bool Field::TakeKey(WPARAM key) {
  const auto go_to = [this](const forms::Control* control) {
    const View* view = views_.ViewOf(control);
    if (view != nullptr) ::SetFocus(view->window);
    return true;
  };
  switch (key) {
    case VK_RETURN:
      if (const View* view = views_.ViewOf(&label_)) {
        views_.Act(*view, [this] {
          if (asks_.empty() || views_.ask(asks_)) label_.UserClick();
        });
      }
      return true;
    case VK_UP:
      return go_to(neighbours_.above);
    case VK_DOWN:
      return go_to(neighbours_.below);
    case VK_LEFT:
      return go_to(neighbours_.left);
    case VK_RIGHT:
      return go_to(neighbours_.right);
    default:
      return false;
  }
}

// The mark is a frame around the field, so that it shows beside every colour.
void Field::Paint() const {
  const Painting painting(window());
  const HDC context = painting.context();
  RECT room = painting.room();
  Fill(context, room, ::GetSysColor(COLOR_BTNFACE));
  const bool marked = label_.BorderStyle() != 0;
  const bool focused = ::GetFocus() == window();
  if (marked || focused) {
    for (int ring = 0; ring < 2; ++ring) {
      ::FrameRect(context, &room, ::GetSysColorBrush(marked ? COLOR_WINDOWTEXT : COLOR_HIGHLIGHT));
      ::InflateRect(&room, -1, -1);
    }
  } else {
    ::InflateRect(&room, -2, -2);
  }
  ::InflateRect(&room, -1, -1);
  const COLORREF ground = NativeColor(label_.BackColor());
  Fill(context, room, ground);
  ::FrameRect(context, &room, ::GetSysColorBrush(COLOR_3DSHADOW));
  const HGDIOBJ former = ::SelectObject(context, views_.letters().font());
  ::SetTextColor(context, InkOn(ground));
  ::DrawTextW(context, WideText(label_.Caption()).c_str(), -1, &room,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
  if (marked && focused) ::DrawFocusRect(context, &room);
  ::SelectObject(context, former);
}

Box ControlMaker::MakeField(forms::Label& label, const std::string& asks) {
  const auto field = std::make_shared<Field>(label, views_, asks);
  View& view = views_.Add(field, WS_TABSTOP, &label);
  view.show = [&label, &view] {
    SetText(view.window, label.Caption().empty() ? label.ToolTipText() : label.Caption());
    ::InvalidateRect(view.window, nullptr, FALSE);
  };
  view.take_key = [field = field.get()](WPARAM key) { return field->TakeKey(key); };
  Box box = views_.BoxOf(view, [&label, this] {
    const std::int32_t side = views_.letters().LineHeight();
    const std::int32_t words =
        label.Caption().empty() ? 0 : views_.letters().ExtentOf(label.Caption()).width + side;
    return Extent{std::max(side, words), side};
  });
  box.wide = box.high = true;
  return box;
}

// The arrow keys go about the palette as over a sheet; from the uppermost cells to the one above, and back.
void ControlMaker::MadePalette(const std::vector<forms::Control*>& cells, int rows, forms::Control* above) {
  const auto at = [&](std::size_t place) { return place < cells.size() ? cells[place] : nullptr; };
  const auto height = static_cast<std::size_t>(rows);
  const auto field_of = [&](const forms::Control* control) {
    const View* view = views_.ViewOf(control);
    return view == nullptr ? nullptr : dynamic_cast<Field*>(view->painted.get());
  };
  for (std::size_t place = 0; place < cells.size(); ++place) {
    Field* const field = field_of(cells[place]);
    if (field == nullptr) continue;
    const std::size_t row = place % height;
    field->Beside({row == 0 ? above : at(place - 1), row + 1 == height ? nullptr : at(place + 1),
                   place < height ? nullptr : at(place - height), at(place + height)});
  }
  if (Field* const field = field_of(above)) field->Beside({nullptr, at(0), nullptr, at(0)});
}

}  // namespace mirelo::windows
