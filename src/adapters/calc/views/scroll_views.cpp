// A scroll bar of its own, and one whose arrows belong to a text box.

#include <algorithm>
#include <com/sun/star/awt/ScrollBarOrientation.hpp>
#include <com/sun/star/awt/XScrollBar.hpp>
#include <com/sun/star/awt/XSpinValue.hpp>
#include <cstdlib>
#include <string>
#include <utility>

#include "adapters/calc/views/boxes_of_controls.h"
#include "adapters/calc/views/listeners.h"
#include "adapters/calc/views/views.h"
#include "forms/layout/measures.h"
#include "forms/scroll_bar.h"
#include "forms/text_box.h"

namespace mirelo::calc {

namespace layout = forms::layout;

using forms::layout::Box;
using forms::layout::Extent;

namespace {

// From the top, which stands for Min, whichever way the values run.
std::int32_t PlaceOf(const forms::ScrollBar& bar) { return std::abs(bar.Value() - bar.Min()); }
std::int32_t Longest(const forms::ScrollBar& bar) { return std::abs(bar.Max() - bar.Min()); }
std::int32_t ValueAt(const forms::ScrollBar& bar, std::int32_t place) {
  return bar.Min() < bar.Max() ? bar.Min() + place : bar.Min() - place;
}

// Up is towards the bar's top, and the office's arrow up counts up.
void Spin(forms::ScrollBar& bar, std::int32_t height) {
  const std::int32_t before = Longest(bar) - PlaceOf(bar);
  if (height == before + 1) return bar.UserStepUp();
  if (height == before - 1) return bar.UserStepDown();
  if (height != before) bar.UserDrag(ValueAt(bar, Longest(bar) - height));
}

Box MakeArrows(forms::ScrollBar& bar, Views& views) {
  View& view = views.Add("SpinButton", &bar, bar.Name());
  view.Set("Orientation", css::awt::ScrollBarOrientation::VERTICAL);
  view.Set("SpinValueMin", sal_Int32{0});
  view.Set("SpinValueMax", sal_Int32{Longest(bar)});
  view.Set("SpinIncrement", sal_Int32{1});
  view.Set("Repeat", true);
  view.show = [&] { view.Set("SpinValue", sal_Int32{Longest(bar) - PlaceOf(bar)}); };
  view.connect = [&] {
    view.As<css::awt::XSpinValue>()->addAdjustmentListener(new OnAdjustment(
        views.Heard([&](const auto& event) { views.Act(view, [&] { Spin(bar, event.Value); }); })));
  };
  return views.BoxOf(view, [&] { return Extent{views.LineHeight() * 2 / 3, views.LineHeight()}; });
}

}  // namespace

Box MakeSpinBox(forms::TextBox& box, forms::ScrollBar& bar, Views& views) {
  Box text = MakeBox(box, views);
  const auto longest = std::max(std::to_string(bar.Min()).size(), std::to_string(bar.Max()).size());
  text.wide = false;
  text.needs = [&views, longest] {
    return Extent{(static_cast<std::int32_t>(longest) + 3) * views.LetterWidth(), views.LineHeight()};
  };
  Box pair{.kind = Box::Kind::Row};
  pair.boxes = {std::move(text), MakeArrows(bar, views)};
  return pair;
}

Box MakeBox(forms::ScrollBar& bar, Views& views) {
  View& view = views.Add("ScrollBar", &bar, bar.Name());
  view.Set("Orientation", css::awt::ScrollBarOrientation::VERTICAL);
  view.Set("ScrollValueMin", sal_Int32{0});
  view.Set("ScrollValueMax", sal_Int32{Longest(bar)});
  view.Set("VisibleSize", sal_Int32{0});
  view.Set("LineIncrement", sal_Int32{1});
  view.show = [&] { view.Set("ScrollValue", sal_Int32{PlaceOf(bar)}); };
  view.connect = [&] {
    view.As<css::awt::XScrollBar>()->addAdjustmentListener(
        new OnAdjustment(views.Heard([&](const auto& event) {
          if (event.Value == PlaceOf(bar)) return;
          views.Act(view, [&] { bar.UserDrag(ValueAt(bar, event.Value)); });
        })));
  };
  Box place = views.BoxOf(view, [&] {
    return Extent{views.LineHeight() * 2 / 3, layout::kLinesOfScrollBar * views.LineHeight()};
  });
  place.high = true;
  return place;
}

}  // namespace mirelo::calc
