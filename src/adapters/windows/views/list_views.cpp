// Lists of entries, and texts with a list to choose them from.

#include "adapters/windows/views/native.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "adapters/windows/views/control_maker.h"
#include "adapters/windows/views/views.h"
#include "automation/wide_text.h"
#include "forms/combo_box.h"
#include "forms/layout/measures.h"
#include "forms/list_box.h"

namespace mirelo::windows {

namespace layout = forms::layout;

using forms::layout::Box;
using forms::layout::Extent;
using forms::layout::Place;

namespace {

constexpr int kFrameOfCombo = 6;

using Items = std::vector<std::string>;

// Whether the entries had to be put in anew, which leaves none selected.
bool ShowItems(HWND window, const Items& items, Items& shown, UINT clear, UINT add) {
  if (items == shown) return false;
  ::SendMessageW(window, clear, 0, 0);
  for (const std::string& item : items) {
    ::SendMessageW(window, add, 0, reinterpret_cast<LPARAM>(WideText(item).c_str()));
  }
  shown = items;
  return true;
}

void ShowTyped(const forms::ComboBox& box, HWND window) {
  if (TextOf(window) == box.Text()) return;
  DWORD from = 0;
  DWORD to = 0;
  ::SendMessageW(window, CB_GETEDITSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
  ::SetWindowTextW(window, WideText(box.Text()).c_str());
  ::SendMessageW(window, CB_SETEDITSEL, 0, MAKELPARAM(from, to));
}

void ShowCombo(const forms::ComboBox& box, HWND window, Items& shown) {
  ShowItems(window, box.Items(), shown, CB_RESETCONTENT, CB_ADDSTRING);
  const auto index = box.ListIndex();
  if (::SendMessageW(window, CB_GETCURSEL, 0, 0) != index) {
    ::SendMessageW(window, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  }
  if (box.ComboStyle() == forms::ComboBox::Style::DropDown) ShowTyped(box, window);
}

bool IsDropped(HWND window) { return ::SendMessageW(window, CB_GETDROPPEDSTATE, 0, 0) != 0; }

}  // namespace

// Behind the choice of an entry Windows puts that into the box, whatever the control made of it.
Box ControlMaker::MakeBox(forms::ComboBox& box) {
  const bool editable = box.ComboStyle() == forms::ComboBox::Style::DropDown;
  View& view = views_.Add(
      WC_COMBOBOXW, WS_TABSTOP | WS_VSCROLL | CBS_AUTOHSCROLL | (editable ? CBS_DROPDOWN : CBS_DROPDOWNLIST),
      0, &box);
  const auto shown = std::make_shared<Items>();
  view.show = [&box, &view, shown] { ShowCombo(box, view.window, *shown); };
  view.command = [&box, &view, this](int code) {
    if (code == CBN_SELCHANGE) {
      const auto index = static_cast<std::int32_t>(::SendMessageW(view.window, CB_GETCURSEL, 0, 0));
      if (index != box.ListIndex()) views_.Act(view, [&] { box.UserChoose(index); });
      views_.ShowAgain(view);
    } else if (code == CBN_EDITCHANGE) {
      const std::string text = TextOf(view.window);
      if (text != box.Text()) views_.Act(view, [&] { box.UserEdit(text); });
    } else if (code == CBN_SETFOCUS && views_.focused) {
      views_.focused(view);
    }
  };
  view.take_key = [&view](WPARAM key) {
    if ((key != VK_RETURN && key != VK_ESCAPE) || !IsDropped(view.window)) return false;
    ::SendMessageW(view.window, CB_SHOWDROPDOWN, FALSE, 0);
    return true;
  };
  Box place = views_.BoxOf(view, [this] {
    const Lettering& letters = views_.letters();
    return Extent{layout::kLettersOfCombo * letters.LetterWidth() + letters.LineHeight(),
                  letters.LineHeight()};
  });
  // To Windows such a box is as high as it is with its list.
  place.put = [&view, this](const Place& room) {
    const Lettering& letters = views_.letters();
    ::SendMessageW(view.window, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1),
                   letters.LineHeight() - letters.Scaled(kFrameOfCombo));
    ::SetWindowPos(view.window, nullptr, room.left, room.top, room.width,
                   room.height + layout::kLinesOfDroppedList * letters.LetterHeight(),
                   SWP_NOZORDER | SWP_NOACTIVATE);
  };
  place.wide = true;
  return place;
}

Box ControlMaker::MakeBox(forms::ListBox& list) {
  View& view = views_.Add(WC_LISTBOXW, WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
                          WS_EX_CLIENTEDGE, &list);
  const auto shown = std::make_shared<Items>();
  view.show = [&list, &view, shown] {
    const LRESULT top = ::SendMessageW(view.window, LB_GETTOPINDEX, 0, 0);
    if (ShowItems(view.window, list.Items(), *shown, LB_RESETCONTENT, LB_ADDSTRING)) {
      ::SendMessageW(view.window, LB_SETTOPINDEX, static_cast<WPARAM>(top), 0);
    }
    if (::SendMessageW(view.window, LB_GETCURSEL, 0, 0) != list.ListIndex()) {
      ::SendMessageW(view.window, LB_SETCURSEL, static_cast<WPARAM>(list.ListIndex()), 0);
    }
  };
  view.command = [&list, &view, this](int code) {
    const auto index = static_cast<std::int32_t>(::SendMessageW(view.window, LB_GETCURSEL, 0, 0));
    if (code == LBN_SELCHANGE && index != list.ListIndex()) {
      views_.Act(view, [&] { list.UserSelect(index); });
    } else if (code == LBN_DBLCLK) {
      views_.Act(view, [&] { list.UserDoubleClick(index); });
    }
  };
  Box place = views_.BoxOf(view, [this] {
    const Lettering& letters = views_.letters();
    return Extent{layout::kLettersOfList * letters.LetterWidth(),
                  layout::kLinesOfList * letters.LetterHeight()};
  });
  place.wide = place.high = true;
  return place;
}

}  // namespace mirelo::windows
