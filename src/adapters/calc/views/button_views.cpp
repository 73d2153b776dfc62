// Push buttons, check boxes and the strips of tabs.

#include <algorithm>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/awt/ImagePosition.hpp>
#include <com/sun/star/awt/XButton.hpp>
#include <com/sun/star/awt/XCheckBox.hpp>
#include <com/sun/star/style/VerticalAlignment.hpp>
#include <string>
#include <utility>

#include "adapters/calc/views/boxes_of_controls.h"
#include "adapters/calc/views/listeners.h"
#include "adapters/calc/views/marked_letter.h"
#include "adapters/calc/views/pictures.h"
#include "adapters/calc/views/views.h"
#include "forms/button.h"
#include "forms/check_box.h"
#include "forms/layout/measures.h"
#include "forms/tab.h"

namespace mirelo::calc {

namespace layout = forms::layout;

using forms::layout::Box;
using forms::layout::Extent;

namespace {

constexpr int kAroundPicture = 6;
constexpr int kBesideWords = 14;
constexpr int kFewestLetters = 9;  // of a button with words, so that all of a row are alike

Extent NeededByButton(const forms::Button& button, const View& view, const Views& views) {
  const std::int32_t height = std::max(views.LineHeight(), layout::kSmallPicture + 2 * kAroundPicture);
  if (button.Caption().empty()) return {height, height};
  const bool pictured = !button.Picture().empty();
  const std::int32_t words = Views::Preferred(view).width + (pictured ? layout::kSmallPicture : 0);
  return {std::max(words + 2 * kBesideWords, kFewestLetters * views.LetterWidth()), height};
}

}  // namespace

Box MakeBox(forms::Button& button, Views& views) {
  View& view = views.Add("Button", &button, button.Name());
  view.Set("FocusOnClick", true);
  view.show = [&button, &view, &views] {
    view.SetText("Label", WithMarkedLetter(button.Caption()));
    view.Set("DefaultButton", button.Default());
    const auto picture = views.graphics().Of(PictureText(button.Picture(), layout::kSmallPicture));
    if (!picture.is()) return view.Unset("Graphic");
    view.Set("Graphic", picture);
    const bool alone = button.Caption().empty();
    view.Set("ImagePosition",
             alone ? css::awt::ImagePosition::Centered : css::awt::ImagePosition::LeftCenter);
  };
  view.connect = [&button, &view, &views] {
    view.As<css::awt::XButton>()->addActionListener(new OnAction(views.Heard([&](const auto&) {
      if (views.can_press()) views.Act(view, [&] { button.UserPress(); });
    })));
  };
  return views.BoxOf(view, [&] { return NeededByButton(button, view, views); });
}

Box MakeBox(forms::CheckBox& box, Views& views) {
  View& view = views.Add("CheckBox", &box, box.Name());
  view.Set("VerticalAlign", css::style::VerticalAlignment_MIDDLE);
  view.show = [&] {
    view.SetText("Label", WithMarkedLetter(box.Caption()));
    view.Set("State", static_cast<sal_Int16>(box.Value()));
  };
  view.connect = [&] {
    view.As<css::awt::XCheckBox>()->addItemListener(new OnItem(views.Heard([&](const auto& event) {
      if (event.Selected != box.Value()) views.Act(view, [&] { box.UserClick(); });
    })));
  };
  return views.BoxOf(view, [&] {
    const Extent words = Views::Preferred(view);
    return Extent{words.width, std::max(words.height, views.LineHeight())};
  });
}

Box MakeTabStrip(forms::Tab& tab, Views& views) {
  Box strip{.kind = Box::Kind::Row};
  for (std::size_t place = 0; place < tab.Captions().size(); ++place) {
    const auto number = static_cast<std::int32_t>(place);
    View& view = views.Add("Button", &tab, tab.Name() + ":" + std::to_string(number));
    view.SetText("Label", WithMarkedLetter(tab.Captions()[place]));
    view.Set("Toggle", true);
    view.show = [&tab, &view, number] {
      const bool current = tab.CurrTab() == number;
      view.Set("State", static_cast<sal_Int16>(current ? 1 : 0));
      view.Set("FontWeight", current ? css::awt::FontWeight::BOLD : css::awt::FontWeight::NORMAL);
    };
    view.connect = [&tab, &view, &views, number] {
      view.As<css::awt::XButton>()->addActionListener(new OnAction(views.Heard(
          [&, number](const auto&) { views.Act(view, [&, number] { tab.UserSelect(number); }); })));
    };
    strip.boxes.push_back(views.BoxOf(view, [&view, &views] {
      return Extent{Views::Preferred(view).width + 2 * kBesideWords,
                    std::max(views.LineHeight(), layout::kSmallPicture + 2 * kAroundPicture)};
    }));
  }
  strip.boxes.push_back({.kind = Box::Kind::Space});
  return strip;
}

}  // namespace mirelo::calc
