// press_button TITLE BUTTON [TEXT]: waits for a window of that title, types TEXT into the box that has the
// focus there and presses Add, and then the button, as another program would: by messages. 0 when it has
// pressed it, 1 when no such window came up within a quarter of a minute.

#include <windows.h>

#include <string>

namespace {

constexpr DWORD kPatience = 15'000;  // milliseconds
constexpr DWORD kBetweenLooks = 50;

HWND WaitFor(const std::wstring& title) {
  for (const DWORD began = ::GetTickCount(); ::GetTickCount() - began < kPatience; ::Sleep(kBetweenLooks)) {
    const HWND window = ::FindWindowW(nullptr, title.c_str());
    if (window != nullptr && ::IsWindowVisible(window) != 0 && ::IsWindowEnabled(window) != 0) return window;
  }
  return nullptr;
}

// A button is known by its words, without the sign that marks a letter of them.
bool Press(HWND window, const std::wstring& words) {
  for (HWND button = nullptr; (button = ::FindWindowExW(window, button, L"Button", nullptr)) != nullptr;) {
    wchar_t text[64] = L"";
    ::GetWindowTextW(button, text, 64);
    std::wstring shown(text);
    std::erase(shown, L'&');
    if (shown != words) continue;
    ::PostMessageW(button, BM_CLICK, 0, 0);
    return true;
  }
  return false;
}

// The window has it a moment after it is there.
HWND BoxWithTheFocus(HWND window) {
  const DWORD thread = ::GetWindowThreadProcessId(window, nullptr);
  for (const DWORD began = ::GetTickCount(); ::GetTickCount() - began < kPatience; ::Sleep(kBetweenLooks)) {
    GUITHREADINFO its{};
    its.cbSize = sizeof its;
    wchar_t kind[16] = L"";
    if (::GetGUIThreadInfo(thread, &its) != 0 && its.hwndFocus != nullptr)
      ::GetClassNameW(its.hwndFocus, kind, 16);
    if (std::wstring(kind) == L"Edit") return its.hwndFocus;
  }
  return nullptr;
}

bool AddTicker(HWND window, const wchar_t* ticker) {
  const HWND box = BoxWithTheFocus(window);
  if (box == nullptr) return false;
  ::SendMessageW(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(ticker));
  return Press(window, L"Add");
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count < 3) return 2;
  const HWND window = WaitFor(arguments[1]);
  if (window == nullptr) return 1;
  if (count > 3 && !AddTicker(window, arguments[3])) return 1;
  return Press(window, arguments[2]) ? 0 : 1;
}
