// Typing into a cell of a grid.

#include "adapters/windows/views/grid_view.h"
#include "automation/wide_text.h"

namespace mirelo::windows {

// Opens the active cell for a new text, if it takes one. A letter that was typed is the text's first.
bool GridView::Edit(wchar_t typed) {
  bool may = false;
  Act([&] { may = grid_.UserMayEdit(); });
  if (!may || editor_ != nullptr) return false;
  const auto place = Places().PlaceOf(grid_.Row(), grid_.Col());
  const std::wstring text =
      typed != 0 ? std::wstring(1, typed) : WideText(grid_.TextMatrix(grid_.Row(), grid_.Col()));
  editor_ = ::CreateWindowExW(0, WC_EDITW, text.c_str(), WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, place.left,
                              place.top, place.width, place.height, window(), nullptr, OwnModule(), nullptr);
  ::SendMessageW(editor_, WM_SETFONT, reinterpret_cast<WPARAM>(views_.letters().font()), FALSE);
  editor_watch_.Start(editor_);
  ::SetFocus(editor_);
  const auto length = static_cast<LPARAM>(text.size());
  ::SendMessageW(editor_, EM_SETSEL, typed != 0 ? static_cast<WPARAM>(length) : 0, length);
  return true;
}

bool GridView::TakeKey(WPARAM key) {
  if (editor_ == nullptr || (key != VK_RETURN && key != VK_ESCAPE)) return false;
  EndEdit(key == VK_RETURN);
  ::SetFocus(window());
  return true;
}

void GridView::EndEdit(bool keep) {
  const HWND editor = std::exchange(editor_, nullptr);
  if (editor == nullptr) return;
  const std::string text = TextOf(editor);
  WindowWatch::End(editor);
  ::DestroyWindow(editor);
  if (keep) Act([&] { grid_.UserEditCell(text); });
}

}  // namespace mirelo::windows
