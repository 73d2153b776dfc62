#include <com/sun/star/awt/XTextComponent.hpp>
#include <string>

#include "adapters/calc/objects/office_text.h"
#include "adapters/calc/views/boxes_of_controls.h"
#include "adapters/calc/views/color.h"
#include "adapters/calc/views/listeners.h"
#include "adapters/calc/views/views.h"
#include "automation/text.h"
#include "forms/layout/measures.h"
#include "forms/text_box.h"

namespace mirelo::calc {

namespace layout = forms::layout;

using forms::layout::Box;
using forms::layout::Extent;

namespace {

std::string ShownText(const forms::TextBox& box) {
  return box.MultiLine() ? Replace(box.Text(), "\r\n", "\n") : box.Text();
}

// The model's line ends are those of the report that was put in.
std::string TypedText(const forms::TextBox& box, const View& view) {
  const std::string text = TextOf(view.As<css::awt::XTextComponent>()->getText());
  return box.MultiLine() ? Replace(Replace(text, "\r\n", "\n"), "\n", "\r\n") : text;
}

}  // namespace

Box MakeBox(forms::TextBox& box, Views& views) {
  View& view = views.Add("Edit", &box, box.Name());
  view.show = [&] {
    view.Set("MultiLine", box.MultiLine());
    view.Set("VScroll", box.MultiLine());
    view.Set("ReadOnly", box.Locked());
    if (const auto ground = OfficeColor(box.BackColor())) {
      view.Set("BackgroundColor", *ground);
      view.Set("TextColor", InkOn(*ground));
    } else {
      view.Unset("BackgroundColor");
      view.Unset("TextColor");
    }
    view.SetText("Text", ShownText(box));
  };
  view.connect = [&] {
    view.As<css::awt::XTextComponent>()->addTextListener(new OnText(views.Heard([&](const auto&) {
      const std::string text = TypedText(box, view);
      if (text != box.Text()) views.Act(view, [&] { box.UserEdit(text); });
    })));
  };
  Box place = views.BoxOf(view, [&] {
    if (!box.MultiLine()) return Extent{layout::kLettersOfTextBox * views.LetterWidth(), views.LineHeight()};
    return Extent{layout::kLettersOfReport * views.LetterWidth() / 2,
                  layout::kLinesOfReport * views.LineHeight() / 2};
  });
  place.wide = true;
  place.high = box.MultiLine();
  return place;
}

}  // namespace mirelo::calc
