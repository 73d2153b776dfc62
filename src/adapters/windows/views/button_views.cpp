// Push buttons, check boxes and the strips of tabs.

#include "adapters/windows/views/native.h"

#include <algorithm>
#include <memory>
#include <string>

#include "adapters/windows/views/control_maker.h"
#include "adapters/windows/views/pictures.h"
#include "adapters/windows/views/views.h"
#include "automation/wide_text.h"
#include "forms/button.h"
#include "forms/check_box.h"
#include "forms/layout/measures.h"
#include "forms/tab.h"

namespace mirelo::windows {

namespace layout = forms::layout;

using forms::layout::Box;
using forms::layout::Extent;

namespace {

constexpr int kAroundPicture = 5;
constexpr int kBesideWords = 10;
constexpr int kFewestLetters = 12;  // of a button with words, so that all of a row are alike
constexpr int kTick = 18;           // what a check box has beside its words

// What a button holds to show.
struct ButtonFace {
  std::string picture;
  int pixels = 0;
  Icon icon;
};

void ShowPicture(const forms::Button& button, const View& view, const Lettering& letters, ButtonFace& face) {
  const int pixels = letters.Scaled(layout::kSmallPicture);
  if (face.picture == button.Picture() && face.pixels == pixels) return;
  face.picture = button.Picture();
  face.pixels = pixels;
  Icon next = PictureIcon(face.picture, pixels);
  ::SendMessageW(view.window, BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(next.get()));
  face.icon = std::move(next);
}

// The letter that a caption marks, in small; 0 for none.
wchar_t MarkedLetter(const std::wstring& caption) {
  for (std::size_t at = 0; at + 1 < caption.size(); ++at) {
    if (caption[at] != L'&') continue;
    if (caption[at + 1] != L'&') {
      wchar_t letter = caption[at + 1];
      ::CharLowerBuffW(&letter, 1);
      return letter;
    }
    ++at;
  }
  return 0;
}

bool SelectByLetter(forms::Tab& tab, const View& view, const Views& views, wchar_t letter) {
  ::CharLowerBuffW(&letter, 1);
  for (std::size_t place = 0; place < tab.Captions().size(); ++place) {
    if (MarkedLetter(WideText(tab.Captions()[place])) != letter) continue;
    views.Act(view, [&] { tab.UserSelect(static_cast<std::int32_t>(place)); });
    return true;
  }
  return false;
}

Extent NeededByStrip(const forms::Tab& tab, const View& view, const Views& views) {
  RECT last{};
  TabCtrl_GetItemRect(view.window, static_cast<int>(tab.Captions().size()) - 1, &last);
  std::int32_t words = 0;
  for (const std::string& caption : tab.Captions()) {
    words += views.letters().ExtentOf(caption, false, true).width + 2 * views.letters().Scaled(kBesideWords);
  }
  return {std::max<std::int32_t>(words, last.right), views.letters().LineHeight()};
}

}  // namespace

// A button that shows a picture alone is read out by its tool tip.
Box ControlMaker::MakeBox(forms::Button& button) {
  const bool pictured = button.Caption().empty();
  const DWORD look = pictured ? BS_ICON : 0;
  View& view = views_.Add(WC_BUTTONW, WS_TABSTOP | BS_PUSHBUTTON | BS_NOTIFY | look, 0, &button);
  const auto face = std::make_shared<ButtonFace>();
  view.show = [&button, &view, face, this] {
    SetText(view.window, button.Caption().empty() ? button.ToolTipText() : button.Caption());
    ShowPicture(button, view, views_.letters(), *face);
  };
  view.command = [&button, &view, this](int code) {
    if (code == BN_CLICKED) views_.Act(view, [&] { button.UserPress(); });
  };
  return views_.BoxOf(view, [&button, this] {
    const Lettering& letters = views_.letters();
    const std::int32_t height =
        std::max(letters.LineHeight(), letters.Scaled(layout::kSmallPicture + 2 * kAroundPicture));
    if (button.Caption().empty()) return Extent{height, height};
    const std::int32_t words = letters.ExtentOf(button.Caption(), false, true).width;
    return Extent{std::max(words + 2 * letters.Scaled(kBesideWords), kFewestLetters * letters.LetterWidth()),
                  height};
  });
}

// The box does not tick itself: its control may refuse.
Box ControlMaker::MakeBox(forms::CheckBox& box) {
  View& view = views_.Add(WC_BUTTONW, WS_TABSTOP | BS_CHECKBOX | BS_NOTIFY, 0, &box);
  view.show = [&box, &view] {
    SetText(view.window, box.Caption());
    const WPARAM ticked = box.Value() != 0 ? BST_CHECKED : BST_UNCHECKED;
    if (static_cast<WPARAM>(::SendMessageW(view.window, BM_GETCHECK, 0, 0)) != ticked) {
      ::SendMessageW(view.window, BM_SETCHECK, ticked, 0);
    }
  };
  view.command = [&box, &view, this](int code) {
    if (code == BN_CLICKED) views_.Act(view, [&] { box.UserClick(); });
  };
  return views_.BoxOf(view, [&box, this] {
    const Lettering& letters = views_.letters();
    return Extent{letters.ExtentOf(box.Caption(), false, true).width + letters.Scaled(kTick),
                  letters.LineHeight()};
  });
}

Box ControlMaker::MakeTabStrip(forms::Tab& tab) {
  View& view = views_.Add(WC_TABCONTROLW, WS_TABSTOP, 0, &tab);
  for (std::size_t place = 0; place < tab.Captions().size(); ++place) {
    std::wstring caption = WideText(tab.Captions()[place]);
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = caption.data();
    ::SendMessageW(view.window, TCM_INSERTITEMW, place, reinterpret_cast<LPARAM>(&item));
  }
  view.show = [&tab, &view] {
    if (TabCtrl_GetCurSel(view.window) != tab.CurrTab()) TabCtrl_SetCurSel(view.window, tab.CurrTab());
  };
  view.notify = [&tab, &view, this](const NMHDR& told) -> LRESULT {
    if (told.code == TCN_SELCHANGE) {
      const int place = TabCtrl_GetCurSel(view.window);
      views_.Act(view, [&] { tab.UserSelect(place); });
    }
    return 0;
  };
  view.take_turn = [&tab, &view, this](int step) {
    const auto all = static_cast<std::int32_t>(tab.Captions().size());
    views_.Act(view, [&] { tab.UserSelect((tab.CurrTab() + step + all) % all); });
  };
  view.take_letter = [&tab, &view, this](wchar_t letter) {
    return SelectByLetter(tab, view, views_, letter);
  };
  Box box = views_.BoxOf(view, [&tab, &view, this] { return NeededByStrip(tab, view, views_); });
  box.wide = true;
  return box;
}

}  // namespace mirelo::windows
