#include "adapters/windows/views/native.h"

#include <string>

#include "adapters/windows/views/color.h"
#include "adapters/windows/views/control_maker.h"
#include "adapters/windows/views/views.h"
#include "automation/wide_text.h"
#include "forms/layout/measures.h"
#include "forms/text_box.h"

namespace mirelo::windows {

namespace layout = forms::layout;

using forms::layout::Box;
using forms::layout::Extent;

namespace {

constexpr WPARAM kNoLimit = 0x7FFFFFFE;

// The place in the text stays where it is.
void ShowText(const forms::TextBox& box, HWND window) {
  if (TextOf(window) == box.Text()) return;
  DWORD from = 0;
  DWORD to = 0;
  ::SendMessageW(window, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
  ::SetWindowTextW(window, WideText(box.Text()).c_str());
  ::SendMessageW(window, EM_SETSEL, from, static_cast<LPARAM>(to));
}

DWORD StyleOf(const forms::TextBox& box) {
  if (!box.MultiLine()) return WS_TABSTOP | ES_AUTOHSCROLL;
  return WS_TABSTOP | ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL;
}

}  // namespace

// Enter is a letter of a text of several lines; in one that can only be read it is the form's. Tab never is.
Box ControlMaker::MakeBox(forms::TextBox& box) {
  View& view = views_.Add(WC_EDITW, StyleOf(box), WS_EX_CLIENTEDGE, &box);
  ::SendMessageW(view.window, EM_SETLIMITTEXT, kNoLimit, 0);
  view.show = [&box, &view] {
    ::SendMessageW(view.window, EM_SETREADONLY, box.Locked() ? TRUE : FALSE, 0);
    ShowText(box, view.window);
    if (!IsDesktopColor(box.BackColor())) ::InvalidateRect(view.window, nullptr, TRUE);
  };
  view.ground = [&box]() -> std::optional<COLORREF> {
    if (IsDesktopColor(box.BackColor())) return std::nullopt;
    return NativeColor(box.BackColor());
  };
  view.command = [&box, &view, this](int code) {
    if (code != EN_CHANGE) return;
    const std::string text = TextOf(view.window);
    if (text != box.Text()) views_.Act(view, [&] { box.UserEdit(text); });
  };
  view.take_key = [&box, &view, this](WPARAM key) {
    if (!box.MultiLine()) return false;
    if (key == VK_TAB) {
      ::SendMessageW(views_.form(), WM_NEXTDLGCTL, ::GetKeyState(VK_SHIFT) < 0 ? 1 : 0, FALSE);
      return true;
    }
    if (key != VK_RETURN || box.Locked()) return false;
    ::SendMessageW(view.window, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"\r\n"));
    return true;
  };
  Box place = views_.BoxOf(view, [&box, this] {
    const Lettering& letters = views_.letters();
    if (!box.MultiLine())
      return Extent{layout::kLettersOfTextBox * letters.LetterWidth(), letters.LineHeight()};
    return Extent{layout::kLettersOfReport * letters.LetterWidth(),
                  layout::kLinesOfReport * letters.LetterHeight()};
  });
  place.wide = true;
  place.high = box.MultiLine();
  return place;
}

}  // namespace mirelo::windows
