#include "windows/views/person.h"

#include <exception>
#include <stdexcept>
#include <utility>

#include "automation/wide_text.h"
#include "forms/text_box.h"

namespace mirelo::windows {

namespace {

constexpr UINT kBetween = 10;  // milliseconds
constexpr DWORD kPatience = 10'000;

Person* somebody = nullptr;

bool Says(HWND window, const std::string& text) {
  struct Sought {
    const std::string& text;
    bool found = false;
  } sought{text};
  ::EnumChildWindows(
      window,
      [](HWND child, LPARAM what) -> BOOL {
        auto& looked_for = *reinterpret_cast<Sought*>(what);
        looked_for.found = looked_for.found || windows::TextOf(child) == looked_for.text;
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&sought));
  return sought.found;
}

std::vector<HWND> ThreadWindows() {
  std::vector<HWND> all;
  ::EnumThreadWindows(
      ::GetCurrentThreadId(),
      [](HWND window, LPARAM found) -> BOOL {
        wchar_t name[32] = L"";
        ::GetClassNameW(window, name, 32);
        const bool is_dialog = std::wstring(name) == L"#32770";
        if (is_dialog && ::IsWindowVisible(window) != 0)
          reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&all));
  return all;
}

// Of a box that is up, what it says.
std::string Report(HWND window) {
  std::string report = windows::TextOf(window) + (::IsWindowEnabled(window) != 0 ? ":" : " (disabled):");
  for (const int number : {0xFFFF, -1}) {
    if (const HWND words = ::GetDlgItem(window, number)) report += " " + windows::TextOf(words);
  }
  return report;
}

LPARAM At(LONG x, LONG y) { return MAKELPARAM(x, y); }

}  // namespace

Person::Person(NativeDesktop& desktop) : desktop_(desktop), last_done_(::GetTickCount()) {
  somebody = this;
  timer_ = ::SetTimer(nullptr, 0, kBetween, OnTime);
}

Person::~Person() {
  ::KillTimer(nullptr, timer_);
  somebody = nullptr;
  for (const Step& step : steps_) ADD_FAILURE() << "nobody came to: " << step.what;
}

void Person::Does(std::string what, std::function<void()> act) {
  const auto ready = [this] {
    const forms::Form* form = forms::ActiveForm();
    const FormWindow* window = form == nullptr ? nullptr : desktop_.WindowOf(*form);
    return window != nullptr && ::IsWindowVisible(window->window()) != 0 &&
           ::IsWindowEnabled(window->window()) != 0;
  };
  steps_.push_back({std::move(what), ready, std::move(act)});
}

void Person::Waits(std::string for_what, std::function<bool()> until) {
  steps_.push_back({std::move(for_what), std::move(until), [] {}});
}

void Person::Answers(const std::string& text, int button) {
  steps_.push_back({"answer " + text, [text] { return Box(text) != nullptr; },
                    [text, button] {
                      const HWND pressed = ::GetDlgItem(Box(text), button);
                      EXPECT_NE(pressed, nullptr) << "the box has no button " << button;
                      ::PostMessageW(pressed, BM_CLICK, 0, 0);
                    }});
}

HWND Person::Box(const std::string& text) {
  for (const HWND window : ThreadWindows()) {
    if (::IsWindowEnabled(window) != 0 && Says(window, text)) return window;
  }
  return nullptr;
}

void CALLBACK Person::OnTime(HWND, UINT, UINT_PTR, DWORD) {
  if (somebody != nullptr) somebody->Tick();
}

void Person::Tick() {
  const bool waited_long = ::GetTickCount() - last_done_ > kPatience;
  if (gave_up_) return EndEverything();
  if (steps_.empty()) {
    if (forms::ActiveForm() != nullptr && waited_long) GiveUp("it does not end");
    return;
  }
  const std::string what = steps_.front().what;
  try {
    if (steps_.front().ready()) {
      ComeBack();
      const Step step = std::move(steps_.front());
      steps_.pop_front();
      last_done_ = ::GetTickCount();
      const ::testing::ScopedTrace trace(__FILE__, __LINE__, what);
      step.act();
    } else if (waited_long) {
      GiveUp("it is not to be done: " + what);
    }
  } catch (const std::exception& failure) {
    GiveUp(what + ": " + failure.what());
  }
}

// Another program of the desktop may have come to the front meanwhile.
void Person::ComeBack() const {
  const forms::Form* form = forms::ActiveForm();
  const FormWindow* window = form == nullptr ? nullptr : desktop_.WindowOf(*form);
  if (::GetFocus() == nullptr && window != nullptr) ::SetForegroundWindow(window->window());
}

void Person::GiveUp(const std::string& why) {
  std::string report = why;
  if (const forms::Form* form = forms::ActiveForm()) {
    report += " (" + form->Name() + " is up)";
    for (const forms::Control* control : form->Controls()) {
      const auto* box = dynamic_cast<const forms::TextBox*>(control);
      if (box != nullptr && box->MultiLine()) report += "\n" + box->Text();
    }
  }
  for (const HWND window : ThreadWindows()) report += "\n" + Report(window);
  ADD_FAILURE() << report;
  steps_.clear();
  gave_up_ = true;
}

// Boxes are answered as carefully as can be, and whatever form comes up is closed.
void Person::EndEverything() const {
  for (const HWND window : ThreadWindows()) {
    for (const int careful : {IDNO, IDABORT, IDOK}) {
      if (const HWND button = ::GetDlgItem(window, careful)) ::PostMessageW(button, BM_CLICK, 0, 0);
    }
  }
  forms::Form* const form = forms::ActiveForm();
  if (form != nullptr && form->Visible()) form->Close();
}

FormWindow& Person::Window() const {
  const forms::Form* form = forms::ActiveForm();
  FormWindow* window = form == nullptr ? nullptr : desktop_.WindowOf(*form);
  if (window == nullptr) throw std::runtime_error("no form is up");
  return *window;
}

HWND Person::Find(const std::string& control) const {
  const auto& all = Window().form().Controls();
  for (std::size_t place = 0; place < all.size(); ++place) {
    if (all[place]->Name() != control) continue;
    const HWND window = ::GetDlgItem(Window().window(), Views::kFirstNumber + static_cast<int>(place));
    if (window != nullptr) return window;
  }
  throw std::runtime_error("no such window: " + control);
}

RECT Person::PlaceOf(const std::string& control) const {
  RECT place{};
  ::GetWindowRect(Find(control), &place);
  return place;
}

void Person::Click(const std::string& control) const {
  RECT room{};
  ::GetClientRect(Find(control), &room);
  ClickAt(control, room.right / 2, room.bottom / 2);
}

void Person::ClickAt(const std::string& control, std::int32_t x, std::int32_t y) const {
  if (!IsShown(control)) throw std::runtime_error("cannot be seen: " + control);
  const HWND window = Find(control);
  if (::IsWindowEnabled(window) == 0) return;  // Windows gives it no messages of the mouse
  ::PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, At(x, y));
  ::PostMessageW(window, WM_LBUTTONUP, 0, At(x, y));
}

void Person::DoubleClickAt(const std::string& control, std::int32_t x, std::int32_t y) const {
  ClickAt(control, x, y);
  ::PostMessageW(Find(control), WM_LBUTTONDBLCLK, MK_LBUTTON, At(x, y));
  ::PostMessageW(Find(control), WM_LBUTTONUP, 0, At(x, y));
}

void Person::Drag(const std::string& control, POINT from, POINT to) const {
  const HWND window = Find(control);
  ::PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, At(from.x, from.y));
  ::PostMessageW(window, WM_MOUSEMOVE, MK_LBUTTON, At(to.x, to.y));
  ::PostMessageW(window, WM_LBUTTONUP, 0, At(to.x, to.y));
}

void Person::Press(WPARAM key) {
  ::PostMessageW(::GetFocus(), WM_KEYDOWN, key, 1);
  ::PostMessageW(::GetFocus(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

void Person::PressWithAlt(wchar_t letter) {
  constexpr LPARAM kAltIsDown = 1 << 29;
  ::PostMessageW(::GetFocus(), WM_SYSCHAR, letter, kAltIsDown | 1);
}

void Person::Type(const std::string& text) {
  for (const wchar_t letter : WideText(text)) ::PostMessageW(::GetFocus(), WM_CHAR, letter, 1);
}

void Person::Replace(const std::string& control, const std::string& text) const {
  ::SetWindowTextW(Find(control), WideText(text).c_str());
}

void Person::Choose(const std::string& control, int index) const {
  const HWND window = Find(control);
  wchar_t name[32] = L"";
  ::GetClassNameW(window, name, 32);
  const bool is_combo = ::lstrcmpiW(name, WC_COMBOBOXW) == 0;
  ::SendMessageW(window, is_combo ? CB_SETCURSEL : LB_SETCURSEL, static_cast<WPARAM>(index), 0);
  ::PostMessageW(::GetParent(window), WM_COMMAND,
                 MAKEWPARAM(::GetDlgCtrlID(window), is_combo ? CBN_SELCHANGE : LBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(window));
}

void Person::Open(const std::string& tab, int place) const {
  RECT item{};
  TabCtrl_GetItemRect(Find(tab), place, &item);
  ClickAt(tab, (item.left + item.right) / 2, (item.top + item.bottom) / 2);
}

std::string Person::TextOf(const std::string& control) const { return windows::TextOf(Find(control)); }

std::vector<std::string> Person::Items(const std::string& list) const {
  const HWND window = Find(list);
  std::vector<std::string> items;
  for (LRESULT index = 0; index < ::SendMessageW(window, LB_GETCOUNT, 0, 0); ++index) {
    std::wstring text(
        static_cast<std::size_t>(::SendMessageW(window, LB_GETTEXTLEN, static_cast<WPARAM>(index), 0)) + 1,
        L'\0');
    ::SendMessageW(window, LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    items.push_back(NarrowText(text));
  }
  return items;
}

bool Person::IsShown(const std::string& control) const { return ::IsWindowVisible(Find(control)) != 0; }

bool Person::IsEnabled(const std::string& control) const { return ::IsWindowEnabled(Find(control)) != 0; }

bool Person::IsTicked(const std::string& control) const {
  return ::SendMessageW(Find(control), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

bool Person::HasFocus(const std::string& control) const {
  const HWND focus = ::GetFocus();
  return focus == Find(control) || ::GetParent(focus) == Find(control);
}

}  // namespace mirelo::windows
