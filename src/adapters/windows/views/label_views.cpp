// What a person reads and looks at: words, labels, rules, pictures, patches of colour.

#include "adapters/windows/views/native.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "adapters/windows/views/color.h"
#include "adapters/windows/views/control_maker.h"
#include "adapters/windows/views/pictures.h"
#include "adapters/windows/views/views.h"
#include "forms/layout/measures.h"
#include "forms/simple_controls.h"
#include "forms/text_box.h"

namespace mirelo::windows {

namespace layout = forms::layout;

using forms::layout::Box;
using forms::layout::Extent;

namespace {

constexpr int kFrame = 4;

// A patch of a control's colour.
class Swatch final : public PaintedWindow {
 public:
  explicit Swatch(const forms::Control& control) : control_(control) {}
  std::optional<LRESULT> Handle(UINT message, WPARAM, LPARAM) override {
    if (message == WM_ERASEBKGND) return 1;
    if (message != WM_PAINT) return std::nullopt;
    const Painting painting(window());
    Fill(painting.context(), painting.room(), NativeColor(control_.BackColor()));
    ::FrameRect(painting.context(), &painting.room(), ::GetSysColorBrush(COLOR_3DSHADOW));
    return 0;
  }

 private:
  const forms::Control& control_;
};

// A picture that a control names, in the middle.
class PictureField final : public PaintedWindow {
 public:
  using Name = std::function<std::string()>;
  PictureField(Name name, const Views& views) : name_(std::move(name)), views_(views) {}
  std::optional<LRESULT> Handle(UINT message, WPARAM, LPARAM) override {
    if (message == WM_ERASEBKGND) return 1;
    if (message != WM_PAINT) return std::nullopt;
    const Painting painting(window());
    const int side = std::min(painting.room().right, painting.room().bottom);
    Fill(painting.context(), painting.room(), ::GetSysColor(COLOR_BTNFACE));
    const Icon icon = PictureIcon(name_(), side);
    if (icon.get() != nullptr) {
      ::DrawIconEx(painting.context(), (painting.room().right - side) / 2,
                   (painting.room().bottom - side) / 2, icon.get(), side, side, 0, nullptr, DI_NORMAL);
    }
    return 0;
  }

 private:
  Name name_;
  const Views& views_;
};

Box MakePicture(forms::Control& control, const PictureField::Name& name, int pixels, Views& views) {
  View& view = views.Add(std::make_shared<PictureField>(name, views), 0, &control);
  view.show = [&view] { ::InvalidateRect(view.window, nullptr, FALSE); };
  Box box = views.BoxOf(view, [pixels, &views] {
    return Extent{views.letters().Scaled(pixels), views.letters().Scaled(pixels)};
  });
  box.seen = [&control, name] { return control.Visible() && !name().empty(); };
  return box;
}

Extent NeededByLabel(const forms::Label& label, bool bold, bool tells, const Lettering& letters) {
  const Extent words = letters.ExtentOf(label.Caption(), bold);
  const std::int32_t frame = label.BorderStyle() == 0 ? 0 : letters.Scaled(kFrame);
  return {tells ? 0 : words.width + frame + 1, words.height + frame};
}

}  // namespace

Box ControlMaker::MakeBox(forms::Label& label, const std::string& asks) {
  return label.Click.HasSubscribers() ? MakeField(label, asks) : MakeReadLabel(label, false);
}

// A label that has no text yet is told messages of any length, which must not make the form wider.
Box ControlMaker::MakeReadLabel(forms::Label& label, bool bold) {
  View& view = views_.Add(WC_STATICW, SS_NOPREFIX | SS_ENDELLIPSIS | SS_NOTIFY, 0, &label);
  if (bold) views_.MakeBold(view);
  const bool tells = label.Caption().empty();
  view.show = [&label, &view] {
    const LONG_PTR style = ::GetWindowLongPtrW(view.window, GWL_STYLE);
    const LONG_PTR framed = label.BorderStyle() == 0 ? style & ~WS_BORDER : style | WS_BORDER;
    if (framed != style) ::SetWindowLongPtrW(view.window, GWL_STYLE, framed);
    SetText(view.window, label.Caption());
    ::InvalidateRect(view.window, nullptr, TRUE);
  };
  if (tells) {
    view.tool_tip = [&label] { return label.ToolTipText().empty() ? label.Caption() : label.ToolTipText(); };
  }
  view.ground = [&label]() -> std::optional<COLORREF> {
    if (label.BackColor() == forms::kFaceBackground) return std::nullopt;
    return NativeColor(label.BackColor());
  };
  Box box = views_.BoxOf(
      view, [&label, bold, tells, this] { return NeededByLabel(label, bold, tells, views_.letters()); });
  box.wide = tells;
  return box;
}

Box ControlMaker::MakeTitle(forms::Label& label) { return MakeReadLabel(label, true); }

Box ControlMaker::MakeReadWords(const std::string& text, bool bold) {
  View& view = views_.Add(WC_STATICW, SS_NOPREFIX, 0, nullptr);
  if (bold) views_.MakeBold(view);
  SetText(view.window, text);
  return views_.BoxOf(view, [text, bold, this] { return views_.letters().ExtentOf(text, bold); });
}

Box ControlMaker::MakeWords(const std::string& text) { return MakeReadWords(text, false); }

Box ControlMaker::MakeHeading(const std::string& text) { return MakeReadWords(text, true); }

Box ControlMaker::MakePanelHeading(forms::Panel& panel) {
  View& view = views_.Add(WC_STATICW, SS_NOPREFIX, 0, &panel);
  views_.MakeBold(view);
  view.show = [&panel, &view] { SetText(view.window, panel.Caption()); };
  Box box = views_.BoxOf(view, [&panel, this] { return views_.letters().ExtentOf(panel.Caption(), true); });
  box.seen = [&panel] { return panel.Visible() && !panel.Caption().empty(); };
  box.wide = true;
  return box;
}

Box ControlMaker::MakePanelPicture(forms::Panel& panel) {
  return MakePicture(
      panel, [&panel] { return panel.Picture(); }, layout::kLargePicture, views_);
}

Box ControlMaker::MakeBox(forms::Image& image) {
  return MakePicture(
      image, [&image] { return image.Picture(); }, layout::kSmallPicture, views_);
}

Box ControlMaker::MakeBox(forms::Line& line) {
  const View& view = views_.Add(WC_STATICW, SS_ETCHEDHORZ, 0, &line);
  Box box = views_.BoxOf(view, [this] { return Extent{0, views_.letters().Scaled(layout::kRuleHeight)}; });
  // The rule is drawn at its top.
  box.put = [put = box.put](forms::layout::Place room) {
    room.top += room.height / 2;
    room.height = 2;
    put(room);
  };
  box.wide = true;
  return box;
}

Box ControlMaker::MakeSwatchBox(forms::TextBox& box) {
  View& view = views_.Add(std::make_shared<Swatch>(box), 0, &box);
  view.show = [&view] { ::InvalidateRect(view.window, nullptr, FALSE); };
  return views_.BoxOf(view, [this] {
    return Extent{2 * views_.letters().LineHeight(), views_.letters().LineHeight()};
  });
}

}  // namespace mirelo::windows
