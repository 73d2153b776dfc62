// A scroll bar of its own, and one whose arrows belong to a text box.

#include "adapters/windows/views/native.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>

#include "adapters/windows/views/control_maker.h"
#include "adapters/windows/views/views.h"
#include "forms/layout/measures.h"
#include "forms/scroll_bar.h"
#include "forms/text_box.h"

namespace mirelo::windows {

namespace layout = forms::layout;

using forms::layout::Box;
using forms::layout::Extent;

namespace {

// From the top, which stands for Min, whichever way the values run.
int PlaceOf(const forms::ScrollBar& bar) { return std::abs(bar.Value() - bar.Min()); }
int Longest(const forms::ScrollBar& bar) { return std::abs(bar.Max() - bar.Min()); }
std::int32_t ValueAt(const forms::ScrollBar& bar, int place) {
  return bar.Min() < bar.Max() ? bar.Min() + place : bar.Min() - place;
}

void Scroll(forms::ScrollBar& bar, int code, int place) {
  constexpr int kPage = 10;
  switch (code) {
    case SB_LINEUP:
      return bar.UserStepUp();
    case SB_LINEDOWN:
      return bar.UserStepDown();
    case SB_PAGEUP:
      return bar.UserDrag(ValueAt(bar, std::max(0, PlaceOf(bar) - kPage)));
    case SB_PAGEDOWN:
      return bar.UserDrag(ValueAt(bar, std::min(Longest(bar), PlaceOf(bar) + kPage)));
    case SB_TOP:
      return bar.UserDrag(bar.Min());
    case SB_BOTTOM:
      return bar.UserDrag(bar.Max());
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      return bar.UserDrag(ValueAt(bar, place));
    default:
      return;
  }
}

// The arrow up is the bar's step towards its top. They count nothing by themselves. The arrow keys in the
// text are theirs.
Box MakeArrows(forms::ScrollBar& bar, const forms::TextBox& text, Views& views) {
  View& view = views.Add(UPDOWN_CLASSW, UDS_ARROWKEYS, 0, &bar);
  ::SendMessageW(view.window, UDM_SETBUDDY, reinterpret_cast<WPARAM>(views.ViewOf(&text)->window), 0);
  view.notify = [&bar, &view, &views](const NMHDR& told) -> LRESULT {
    if (told.code != UDN_DELTAPOS) return 0;
    const bool up = reinterpret_cast<const NMUPDOWN&>(told).iDelta > 0;
    views.Act(view, [&] { up ? bar.UserStepUp() : bar.UserStepDown(); });
    return TRUE;
  };
  ::SendMessageW(view.window, UDM_SETRANGE32, 0, 2);
  ::SendMessageW(view.window, UDM_SETPOS32, 0, 1);
  return views.BoxOf(view, [&views] {
    return Extent{views.letters().LineHeight() * 3 / 4, views.letters().LineHeight()};
  });
}

}  // namespace

Box ControlMaker::MakeSpinBox(forms::TextBox& box, forms::ScrollBar& bar) {
  Box text = MakeBox(box);
  const auto longest = std::max(std::to_string(bar.Min()).size(), std::to_string(bar.Max()).size());
  text.wide = false;
  text.needs = [longest, this] {
    return Extent{(static_cast<std::int32_t>(longest) + 3) * views_.letters().LetterWidth(),
                  views_.letters().LineHeight()};
  };
  Box pair{.kind = Box::Kind::Row};
  pair.boxes = {std::move(text), MakeArrows(bar, box, views_)};
  return pair;
}

Box ControlMaker::MakeBox(forms::ScrollBar& bar) {
  View& view = views_.Add(WC_SCROLLBARW, WS_TABSTOP | SBS_VERT, 0, &bar);
  view.show = [&bar, &view] {
    SCROLLINFO seen{};
    seen.cbSize = sizeof seen;
    seen.fMask = SIF_RANGE | SIF_POS;
    seen.nMax = Longest(bar);
    seen.nPos = PlaceOf(bar);
    ::SetScrollInfo(view.window, SB_CTL, &seen, TRUE);
  };
  view.scroll = [&bar, &view, this](int code, int place) {
    views_.Act(view, [&] { Scroll(bar, code, place); });
  };
  Box place = views_.BoxOf(view, [this] {
    const std::int32_t line = views_.letters().LineHeight();
    return Extent{line * 3 / 4, layout::kLinesOfScrollBar * line};
  });
  place.high = true;
  return place;
}

}  // namespace mirelo::windows
