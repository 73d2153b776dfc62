#include "adapters/windows/views/form_window.h"

#include <algorithm>
#include <utility>

#include "adapters/windows/views/color.h"
#include "adapters/windows/views/common_controls.h"
#include "adapters/windows/window_loop.h"
#include "automation/runtime_error.h"
#include "automation/wide_text.h"
#include "forms/button.h"
#include "forms/layout/layouts.h"
#include "forms/simple_controls.h"
#include "forms/tab.h"

namespace mirelo::windows {

using forms::layout::Box;
using forms::layout::Extent;

namespace {

using Border = forms::Form::Border;
using State = forms::Form::State;

constexpr int kNotSupported = 445;

bool IsSizable(Border border) { return border == Border::Sizable || border == Border::SizableToolWindow; }

bool IsTool(Border border) {
  return border == Border::FixedToolWindow || border == Border::SizableToolWindow;
}

DWORD StyleOf(Border border) {
  DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN | DS_3DLOOK;
  if (IsSizable(border)) style |= WS_THICKFRAME;
  if (border == Border::Sizable) style |= WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
  if (border == Border::FixedDialog) style |= DS_MODALFRAME;
  return style;
}

State StateOf(HWND window) {
  if (::IsIconic(window) != 0) return State::Minimized;
  return ::IsZoomed(window) != 0 ? State::Maximized : State::Normal;
}

bool IsUsable(HWND window) { return ::IsWindowVisible(window) != 0 && ::IsWindowEnabled(window) != 0; }

int ShowCommandFor(State state) {
  switch (state) {
    case State::Minimized:
      return SW_SHOWMINIMIZED;
    case State::Maximized:
      return SW_SHOWMAXIMIZED;
    default:
      return SW_SHOWNORMAL;
  }
}

// Gaps are made for a screen of 96 dots to the inch.
forms::layout::Gaps GapsFor(const Lettering& letters) {
  forms::layout::Gaps gaps;
  for (std::int32_t* gap : {&gaps.between, &gaps.of_fields, &gaps.of_cells, &gaps.indent, &gaps.margin}) {
    *gap = letters.Scaled(*gap);
  }
  return gaps;
}

void Scale(Box& box, const Lettering& from, const Lettering& to) {
  const auto scaled = [&](std::int32_t length) { return ::MulDiv(length, to.Scaled(960), from.Scaled(960)); };
  box.gap = scaled(box.gap);
  box.margin = scaled(box.margin);
  if (box.first_width) *box.first_width = 0;
  for (Box& inner : box.boxes) Scale(inner, from, to);
}

}  // namespace

FormWindow::FormWindow(forms::Form& form, WindowLoop& loop, HWND above,
                       std::function<bool(const std::string& question)> ask)
    : form_(form), loop_(loop) {
  const CommonControls look;
  Create(above);
  try {
    BuildControls(std::move(ask));
    Fit();
    Center(above);
    Subscribe();
  } catch (...) {
    Destroy();
    throw;
  }
}

FormWindow::~FormWindow() { Destroy(); }

// What Windows sends the window meanwhile is nobody's any more.
void FormWindow::Destroy() {
  for (const auto& [control, cookie] : subscriptions_) control->Appearance.Unsubscribe(cookie);
  form_.Appearance.Unsubscribe(subscription_);
  keys_.reset();
  others_.reset();
  ready_ = false;
  if (window_ == nullptr) return;
  ::SetWindowLongPtrW(window_, DWLP_USER, 0);
  ::DestroyWindow(window_);
}

// A dialog without controls: Windows brings the focus back to where it was, and moves it by the Tab key.
void FormWindow::Create(HWND above) {
  struct {
    DLGTEMPLATE dialog;
    WORD menu, window_class, title;
  } look{};
  look.dialog.style = StyleOf(form_.BorderStyle());
  if (IsTool(form_.BorderStyle())) look.dialog.dwExtendedStyle = WS_EX_TOOLWINDOW;
  window_ = ::CreateDialogIndirectParamW(OwnModule(), &look.dialog, above, Procedure,
                                         reinterpret_cast<LPARAM>(this));
  if (window_ == nullptr) throw RuntimeError(kNotSupported, "Windows can show no windows here");
  ::SetWindowTextW(window_, WideText(form_.Caption()).c_str());
  icon_ = PictureIcon("chart", ::GetSystemMetrics(SM_CXSMICON));
  ::SendMessageW(window_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon_.get()));
}

void FormWindow::BuildControls(std::function<bool(const std::string& question)> ask) {
  views_ = std::make_unique<Views>(window_, loop_);
  views_->ask = std::move(ask);
  views_->focused = [this](const View& view) { FollowFocus(view); };
  maker_ = std::make_unique<ControlMaker>(*views_);
  dots_per_inch_ = DotsPerInch(window_);
  forms::layout::BoxBuilder builder(form_, forms::layout::LayoutOf(form_.Name()), GapsFor(views_->letters()),
                                    *maker_);
  box_ = builder.Build();
  first_ = builder.first();
  keys_.emplace(window_);
  views_->ShowAll();
  ready_ = true;
}

void FormWindow::Subscribe() {
  subscription_ = form_.Appearance.Subscribe([this] { ShowForm(); });
  for (forms::Control* control : form_.Controls()) {
    const bool is_read = dynamic_cast<const forms::Label*>(control) != nullptr ||
                         dynamic_cast<const forms::Panel*>(control) != nullptr;
    subscriptions_.emplace_back(control, control->Appearance.Subscribe([this, control, is_read] {
      if (!ready_) return;
      views_->ShowControl(*control);
      if (is_read) PutControls();  // its words may be longer now
    }));
  }
}

INT_PTR CALLBACK FormWindow::Procedure(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_INITDIALOG) {
    ::SetWindowLongPtrW(window, DWLP_USER, second);
    return FALSE;
  }
  auto* form = reinterpret_cast<FormWindow*>(::GetWindowLongPtrW(window, DWLP_USER));
  if (form == nullptr) return FALSE;
  const auto answer = form->Handle(message, first, second);
  if (!answer) return FALSE;
  const bool is_color = message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC;
  if (is_color) return *answer;
  ::SetWindowLongPtrW(window, DWLP_MSGRESULT, *answer);
  return TRUE;
}

std::optional<LRESULT> FormWindow::Handle(UINT message, WPARAM first, LPARAM second) {
  if (message == WM_NCDESTROY) {  // by whoever owned the window
    window_ = nullptr;
    ready_ = false;
    loop_.Guard([this] {
      if (form_.Visible()) form_.Close();
    });
    return std::nullopt;
  }
  if (!ready_) return std::nullopt;
  switch (message) {
    case FormKeys::kKey:
      TakeKey(FormKeys::Take(first));
      return 0;
    case Views::kShowAgain:
      if (const View* view = views_->ViewAt(reinterpret_cast<HWND>(first))) views_->Show(*view);
      return 0;
    case WM_COMMAND:
      TakeCommand(LOWORD(first), HIWORD(first), reinterpret_cast<HWND>(second));
      return 0;
    case WM_NOTIFY: {
      const auto& told = *reinterpret_cast<const NMHDR*>(second);
      const View* view = views_->ViewAt(told.hwndFrom);
      if (view == nullptr || !view->notify) return std::nullopt;
      return view->notify(told);
    }
    case WM_MOUSEWHEEL:
      Scroll(scrolled_ - GET_WHEEL_DELTA_WPARAM(first) * views_->letters().LineHeight() / WHEEL_DELTA);
      return 0;
    case WM_VSCROLL:
      if (second == 0) {
        TakeScrolling(LOWORD(first));
        return 0;
      }
      if (const View* view = views_->ViewAt(reinterpret_cast<HWND>(second));
          view != nullptr && view->scroll) {
        view->scroll(LOWORD(first), static_cast<short>(HIWORD(first)));
      }
      return 0;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
      return ColorOf(reinterpret_cast<HDC>(first), reinterpret_cast<HWND>(second));
    case WM_CLOSE:
      TakeClosing();
      return 0;
    case WM_SIZE:
      TakeSize(first);
      return std::nullopt;
    case WM_DPICHANGED:
      TakeDots(LOWORD(first), *reinterpret_cast<const RECT*>(second));
      return 0;
    case WM_GETMINMAXINFO: {
      const Extent frame = FrameExtent();
      auto& limits = *reinterpret_cast<MINMAXINFO*>(second);
      const Extent screen = ScreenExtent();
      limits.ptMinTrackSize = {std::min(least_.width + frame.width, screen.width),
                               std::min(least_.height + frame.height, screen.height)};
      return 0;
    }
    default:
      return std::nullopt;
  }
}

// Enter presses the button that has the focus, which Windows would do for the windows that it knows alone.
void FormWindow::TakeKey(const MSG& key) {
  if (key.message == WM_KEYDOWN) {
    if (key.wParam == VK_TAB && ::GetKeyState(VK_CONTROL) < 0)
      return TurnPages(::GetKeyState(VK_SHIFT) < 0 ? -1 : 1);
    const View* view = views_->ViewAt(key.hwnd);
    if (view != nullptr && view->take_key && view->take_key(key.wParam)) return;
    if (key.wParam == VK_RETURN) return loop_.Guard([this] { form_.UserEnter(); });
    if (key.wParam == VK_ESCAPE) return loop_.Guard([this] { form_.UserEscape(); });
  }
  if (key.message == WM_SYSCHAR && TakeLetter(static_cast<wchar_t>(key.wParam))) return;
  MSG message = key;
  if (::IsDialogMessageW(window_, &message) != 0) return;
  ::TranslateMessage(&message);
  ::DispatchMessageW(&message);
}

bool FormWindow::TakeLetter(wchar_t letter) {
  return std::ranges::any_of(views_->all(), [letter](const auto& view) {
    return view->take_letter && IsUsable(view->window) && view->take_letter(letter);
  });
}

void FormWindow::TurnPages(int step) {
  for (const auto& view : views_->all()) {
    if (view->take_turn && IsUsable(view->window)) return view->take_turn(step);
  }
}

// Windows sends the commands of keys that it has taken itself in the name of no window.
void FormWindow::TakeCommand(int number, int code, HWND from) {
  if (from == nullptr || number == IDOK || number == IDCANCEL) {
    if (number == IDOK) loop_.Guard([this] { form_.UserEnter(); });
    if (number == IDCANCEL) loop_.Guard([this] { form_.UserEscape(); });
    return;
  }
  const View* view = views_->ViewAt(from);
  if (view != nullptr && view->window == from && view->command) view->command(code);
}

void FormWindow::TakeClosing() {
  if (!form_.Visible() || ::IsWindowEnabled(window_) == 0) return;
  loop_.Guard([this] { form_.Close(); });
}

void FormWindow::TakeSize(WPARAM how) {
  if (how != SIZE_MINIMIZED) PutControls();
  const State state = StateOf(window_);
  if (shown_ && state != form_.WindowState()) loop_.Guard([&] { form_.WindowState(state); });
}

// The window has come onto a screen of other dots.
void FormWindow::TakeDots(unsigned dots_per_inch, const RECT& place) {
  const Lettering former(dots_per_inch_);
  views_->UseLettering(dots_per_inch);
  Scale(box_, former, views_->letters());
  dots_per_inch_ = dots_per_inch;
  least_ = Needed(box_);
  views_->ShowAll();
  ::SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  Fit();
}

std::optional<LRESULT> FormWindow::ColorOf(HDC context, HWND child) {
  const View* view = views_->ViewAt(child);
  if (view == nullptr || view->window != child || !view->ground) return std::nullopt;
  const auto ground = view->ground();
  if (!ground) return std::nullopt;
  ::SetBkColor(context, *ground);
  ::SetTextColor(context, InkOn(*ground));
  ::SetDCBrushColor(context, *ground);
  return reinterpret_cast<LRESULT>(::GetStockObject(DC_BRUSH));
}

// Nobody sees where they are before the window is shown.
void FormWindow::PutControls() {
  if (::IsWindowVisible(window_) != 0) Lay();
}

// As large as it was designed at least, and as its controls need.
void FormWindow::Fit() {
  least_ = Needed(box_);
  const Extent frame = FrameExtent();
  RECT client{};
  ::GetClientRect(window_, &client);
  const Lettering& letters = views_->letters();
  const LONG width =
      std::max<LONG>({client.right, least_.width + BarWidth(), letters.PixelsOf(form_.Width())});
  const LONG height = std::max<LONG>({client.bottom, least_.height, letters.PixelsOf(form_.Height())});
  if (width != client.right || height != client.bottom) {
    RECT place{};
    ::GetWindowRect(window_, &place);
    PutOnScreen({place.left, place.top, place.left + width + frame.width, place.top + height + frame.height});
  }
  Lay();
}

void FormWindow::ShowForm() {
  if (window_ == nullptr) return;
  ShowState();
}

void FormWindow::ShowState() {
  ::SetWindowTextW(window_, WideText(form_.Caption()).c_str());
  const bool comes_up = form_.Visible() && !shown_;
  if (form_.Visible() != shown_) ShowVisible();
  if (shown_ && !comes_up && StateOf(window_) != form_.WindowState()) {
    ::ShowWindow(window_, ShowCommandFor(form_.WindowState()));
  }
  ShowFocus();
  if (comes_up && form_.ActiveControl() == nullptr) FocusFirst();
}

// The others are given back before this window goes, or that of another program would come to the front.
void FormWindow::ShowVisible() {
  if (!form_.Visible()) {
    shown_ = false;
    if (::IsWindowEnabled(window_) != 0) others_.reset();
    ::ShowWindow(window_, SW_HIDE);
    return;
  }
  Fit();
  others_.emplace(window_);
  ::ShowWindow(window_, ShowCommandFor(form_.WindowState()));
  shown_ = true;  // what Windows gives the focus to until now is nobody's choice
}

// What cannot be seen cannot take keys: a control on a tab that is not the current one may have the focus as
// the form sees it.
void FormWindow::ShowFocus() {
  const forms::Control* active = form_.ActiveControl();
  if (!shown_ || std::exchange(focused_, active) == active) return;
  const View* view = views_->ViewOf(active);
  if (view == nullptr || ::IsWindowVisible(view->window) == 0 || views_->ViewAt(::GetFocus()) == view) return;
  ::SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(view->window), TRUE);
}

// A form that gives no control the focus leaves it to the one that its layout names, else to the first one
// that can be used. A strip of tabs is passed over: what a person came for is on the tab.
void FormWindow::FocusFirst() const {
  const auto focus = [this](const View& view) {
    ::SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(view.window), TRUE);
  };
  if (const View* view = views_->ViewOf(first_)) return focus(*view);
  for (const auto& view : views_->all()) {
    const forms::Control* control = view->control;
    const bool takes_keys = (::GetWindowLongW(view->window, GWL_STYLE) & WS_TABSTOP) != 0;
    if (control == nullptr || !takes_keys || !control->IsUsable() ||
        dynamic_cast<const forms::Tab*>(control) != nullptr)
      continue;
    return focus(*view);
  }
}

// The person has moved the focus.
void FormWindow::FollowFocus(const View& view) {
  if (view.control == nullptr || !shown_) return;
  Reveal(view);
  if (view.control == form_.ActiveControl()) return;
  focused_ = view.control;
  loop_.Guard([&] { form_.ActiveControl(view.control); });
}

}  // namespace mirelo::windows
