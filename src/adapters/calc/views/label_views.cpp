// What a person reads and looks at: words, labels, rules, pictures, patches of colour. A label that can be
// clicked is a button of its colour.

#include <algorithm>
#include <com/sun/star/awt/FontWeight.hpp>
#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/XButton.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <string>
#include <utility>

#include "adapters/calc/views/boxes_of_controls.h"
#include "adapters/calc/views/color.h"
#include "adapters/calc/views/listeners.h"
#include "adapters/calc/views/pictures.h"
#include "adapters/calc/views/views.h"
#include "forms/layout/measures.h"
#include "forms/simple_controls.h"
#include "forms/text_box.h"

namespace mirelo::calc {

namespace layout = forms::layout;

using forms::layout::Box;
using forms::layout::Extent;

namespace {

constexpr sal_Int16 kFlatBorder = 2;
constexpr const char* kMark = "\xE2\x97\x8F";  // a black circle

void MakeBold(const View& view) { view.Set("FontWeight", css::awt::FontWeight::BOLD); }

void ShowGround(const View& view, forms::Color color) {
  const auto ground = OfficeColor(color);
  if (!ground) return view.Unset("BackgroundColor");
  view.Set("BackgroundColor", *ground);
  view.Set("TextColor", InkOn(*ground));
}

Box MakeField(forms::Label& label, Views& views, const std::string& asks) {
  View& view = views.Add("Button", &label, label.Name());
  view.Set("FocusOnClick", true);
  view.show = [&] {
    const std::string mark = label.BorderStyle() == 0 ? "" : kMark;
    const bool parted = !mark.empty() && !label.Caption().empty();
    view.SetText("Label", mark + (parted ? " " : "") + label.Caption());
    ShowGround(view, label.BackColor());
  };
  view.connect = [&, asks] {
    view.As<css::awt::XButton>()->addActionListener(new OnAction(views.Heard([&, asks](const auto&) {
      const bool by_enter = views.last_key == css::awt::Key::RETURN;
      views.Act(view, [&] {
        if (asks.empty() || !by_enter || views.ask(asks)) label.UserClick();
      });
    })));
    view.As<css::awt::XWindow>()->addMouseListener(
        new OnPress(views.Heard([&](const auto&) { views.last_key = 0; })));
  };
  Box box = views.BoxOf(view, [&] {
    const std::int32_t side = views.LineHeight();
    const std::int32_t words = label.Caption().empty() ? 0 : Views::Preferred(view).width + side;
    return Extent{std::max(side, words), side};
  });
  box.wide = box.high = true;
  return box;
}

// A label that has no text yet is told messages of any length, which must not make the form wider.
Box MakeReadLabel(forms::Label& label, Views& views) {
  View& view = views.Add("FixedText", &label, label.Name());
  view.Set("NoLabel", true);
  view.show = [&] {
    view.SetText("Label", label.Caption());
    view.Set("Border", static_cast<sal_Int16>(label.BorderStyle() == 0 ? 0 : kFlatBorder));
    ShowGround(view, label.BackColor());
  };
  const bool tells = label.Caption().empty();
  Box box = views.BoxOf(view, [&, tells] {
    const Extent words = Views::Preferred(view);
    return Extent{tells ? 0 : words.width, std::max(words.height, views.LineHeight() * 2 / 3)};
  });
  box.wide = tells;
  return box;
}

std::string NewName(const Views& views) { return ":words" + std::to_string(views.all().size()); }

Box MakePicture(forms::Control& control, const char* suffix, const std::string& (*picture)(forms::Control&),
                int pixels, Views& views) {
  View& view = views.Add("ImageControl", &control, control.Name() + suffix);
  view.Set("Border", sal_Int16{0});
  view.Set("ScaleImage", false);
  view.Set("Tabstop", false);
  view.show = [&control, &view, &views, picture, pixels] {
    const auto graphic = views.graphics().Of(PictureText(picture(control), pixels));
    graphic.is() ? view.Set("Graphic", graphic) : view.Unset("Graphic");
  };
  Box box = views.BoxOf(view, [pixels] { return Extent{pixels, pixels}; });
  box.seen = [&control, picture] { return control.Visible() && !picture(control).empty(); };
  return box;
}

}  // namespace

Box MakeBox(forms::Label& label, Views& views, const std::string& asks) {
  return label.Click.HasSubscribers() ? MakeField(label, views, asks) : MakeReadLabel(label, views);
}

Box MakeTitle(forms::Label& label, Views& views) {
  Box box = MakeReadLabel(label, views);
  MakeBold(*views.ViewOf(&label));
  return box;
}

Box MakeWords(const std::string& text, Views& views) {
  View& view = views.Add("FixedText", nullptr, NewName(views));
  view.SetText("Label", text);
  return views.BoxOf(view);
}

Box MakeHeading(const std::string& text, Views& views) {
  View& view = views.Add("FixedText", nullptr, NewName(views));
  view.SetText("Label", text);
  MakeBold(view);
  return views.BoxOf(view);
}

Box MakePanelHeading(forms::Panel& panel, Views& views) {
  View& view = views.Add("FixedText", &panel, panel.Name() + ":heading");
  MakeBold(view);
  view.show = [&] { view.SetText("Label", panel.Caption()); };
  Box box = views.BoxOf(view);
  box.seen = [&] { return panel.Visible() && !panel.Caption().empty(); };
  box.wide = true;
  return box;
}

Box MakePanelPicture(forms::Panel& panel, Views& views) {
  return MakePicture(
      panel, ":picture",
      [](forms::Control& control) -> const std::string& {
        return static_cast<forms::Panel&>(control).Picture();
      },
      layout::kLargePicture, views);
}

Box MakeBox(forms::Image& image, Views& views) {
  return MakePicture(
      image, "",
      [](forms::Control& control) -> const std::string& {
        return static_cast<forms::Image&>(control).Picture();
      },
      layout::kSmallPicture, views);
}

Box MakeBox(forms::Line& line, Views& views) {
  const View& view = views.Add("FixedLine", &line, line.Name());
  Box box = views.BoxOf(view, [] { return Extent{0, layout::kRuleHeight}; });
  box.wide = true;
  return box;
}

Box MakeSwatchBox(forms::TextBox& box, Views& views) {
  View& view = views.Add("FixedText", &box, box.Name());
  view.Set("Border", kFlatBorder);
  view.show = [&] { ShowGround(view, box.BackColor()); };
  return views.BoxOf(view, [&] { return Extent{2 * views.LineHeight(), views.LineHeight()}; });
}

}  // namespace mirelo::calc
