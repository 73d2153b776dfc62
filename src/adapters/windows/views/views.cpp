#include "adapters/windows/views/views.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "adapters/windows/window_loop.h"
#include "automation/wide_text.h"
#include "forms/form.h"

namespace mirelo::windows {

using forms::layout::Box;
using forms::layout::Extent;
using forms::layout::Place;

namespace {

constexpr LPARAM kWidestToolTip = 600;

// What a person sees of the control, though it may stand on a page that is not in front.
bool IsThere(const forms::Control* control) { return control == nullptr || control->Visible(); }

bool IsOnFront(const forms::Control* control) {
  for (; control != nullptr; control = control->Parent()) {
    if (!control->Visible()) return false;
    if (control->Parent() != nullptr && !control->Parent()->Shows(*control)) return false;
  }
  return true;
}

bool IsEnabled(const forms::Control* control) {
  for (; control != nullptr; control = control->Parent()) {
    if (!control->Enabled()) return false;
  }
  return true;
}

bool Holds(const forms::Control& holder, const forms::Control* control) {
  for (; control != nullptr; control = control->Parent()) {
    if (control == &holder) return true;
  }
  return false;
}

bool HasFocus(HWND window) {
  const HWND focus = ::GetFocus();
  return focus != nullptr && (focus == window || ::IsChild(window, focus) != 0);
}

int NumberOf(const forms::Control& control) {
  const auto& all = control.Owner().Controls();
  return Views::kFirstNumber + static_cast<int>(std::ranges::find(all, &control) - all.begin());
}

bool IsShown(HWND window) { return (::GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0; }

void SetFont(const View& view, const Lettering& letters) {
  const HFONT font = view.is_bold ? letters.bold_font() : letters.font();
  ::SendMessageW(view.window, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

}  // namespace

std::string TextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(::GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return NarrowText(text);
}

void SetText(HWND window, const std::string& text) {
  if (TextOf(window) != text) ::SetWindowTextW(window, WideText(text).c_str());
}

Views::Views(HWND form, WindowLoop& loop)
    : form_(form), loop_(loop), letters_(std::make_unique<Lettering>(DotsPerInch(form))) {
  tool_tips_ =
      ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0,
                        0, 0, 0, form_, nullptr, OwnModule(), nullptr);
  ::SendMessageW(tool_tips_, TTM_SETMAXTIPWIDTH, 0, letters_->Scaled(kWidestToolTip));
}

// The windows go with the form's, and by then nobody may be asked any more.
Views::~Views() {
  for (const auto& view : views_) {
    WindowWatch::End(view->window);
  }
}

View& Views::Add(const wchar_t* window_class, DWORD style, DWORD extended_style, forms::Control* control) {
  return Add(window_class, style, extended_style, control, nullptr);
}

View& Views::Add(std::shared_ptr<PaintedWindow> painted, DWORD style, forms::Control* control) {
  View& view = Add(PaintedWindow::kClass, style, 0, control, painted.get());
  view.painted = std::move(painted);
  return view;
}

View& Views::Add(const wchar_t* window_class, DWORD style, DWORD extended_style, forms::Control* control,
                 void* parameter) {
  const std::string name = std::exchange(called, {});
  if (!name.empty()) AddUnseenWords(name);
  const INT_PTR number = control == nullptr ? -1 : NumberOf(*control);
  const HWND window =
      ::CreateWindowExW(extended_style, window_class, L"", style | WS_CHILD | WS_CLIPSIBLINGS, 0, 0, 0, 0,
                        form_, reinterpret_cast<HMENU>(number), OwnModule(), parameter);
  views_.push_back(std::make_unique<View>(View{control, page, window}));
  View& view = *views_.back();
  SetFont(view, *letters_);
  focus_watch_.Start(window);
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = form_;
  tool.uId = reinterpret_cast<UINT_PTR>(window);
  wchar_t none[] = L"";
  tool.lpszText = none;
  ::SendMessageW(tool_tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  return view;
}

void Views::MakeBold(View& view) const {
  view.is_bold = true;
  SetFont(view, *letters_);
}

// Windows' own interface for the blind calls a window by the words that come before it.
void Views::AddUnseenWords(const std::string& text) const {
  ::CreateWindowExW(0, WC_STATICW, WideText(text).c_str(), WS_CHILD | SS_NOPREFIX, 0, 0, 0, 0, form_, nullptr,
                    OwnModule(), nullptr);
}

void Views::FocusWatch::Seen(HWND window, UINT message) {
  if (message != WM_SETFOCUS) return;
  const View* const view = views_.ViewAt(window);
  if (view != nullptr && views_.focused) views_.focused(*view);
}

void Views::ShowAll() const {
  for (const auto& view : views_) Show(*view);
}

// What comes up does so before the rest goes, so that the focus goes to the page that is opened.
void Views::ShowControl(const forms::Control& control) const {
  for (const bool seen : {true, false}) {
    for (const auto& view : views_) {
      const forms::Control* const shown = view->control != nullptr ? view->control : view->page;
      if (IsOnFront(shown) != seen) continue;
      if (view->control == &control || (!control.Children().empty() && Holds(control, shown))) Show(*view);
    }
  }
}

// A window that can no longer be used gives the focus on, or no key would reach anything.
void Views::Show(const View& view) const {
  if (view.show) view.show();
  const bool enabled = IsEnabled(view.control != nullptr ? view.control : view.page);
  const bool seen = IsOnFront(view.control != nullptr ? view.control : view.page);
  const bool was_seen = IsShown(view.window);
  if ((!enabled || !seen) && was_seen && HasFocus(view.window)) {
    ::SendMessageW(form_, WM_NEXTDLGCTL, 0, FALSE);
    if (HasFocus(view.window)) ::SetFocus(form_);
  }
  if ((::IsWindowEnabled(view.window) != 0) != enabled) ::EnableWindow(view.window, enabled ? TRUE : FALSE);
  if (was_seen != seen) ::ShowWindow(view.window, seen ? SW_SHOWNA : SW_HIDE);
  if (view.control != nullptr) ShowToolTip(view);
}

void Views::ShowAgain(const View& view) const {
  ::PostMessageW(form_, kShowAgain, reinterpret_cast<WPARAM>(view.window), 0);
}

void Views::ShowToolTip(const View& view) const {
  std::wstring text = WideText(view.tool_tip ? view.tool_tip() : view.control->ToolTipText());
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.hwnd = form_;
  tool.uId = reinterpret_cast<UINT_PTR>(view.window);
  tool.lpszText = text.data();
  ::SendMessageW(tool_tips_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
}

void Views::UseLettering(unsigned dots_per_inch) {
  const auto former = std::exchange(letters_, std::make_unique<Lettering>(dots_per_inch));
  for (const auto& view : views_) SetFont(*view, *letters_);
}

void Views::Act(const View& view, const std::function<void()>& act) const {
  const std::weak_ptr<const bool> living = living_;
  WindowLoop& loop = loop_;
  loop.Guard(act);
  if (!living.expired()) loop.Guard([&] { Show(view); });
}

const View* Views::ViewOf(const forms::Control* control) const {
  if (control == nullptr) return nullptr;
  const auto view = std::ranges::find_if(views_, [&](const auto& any) { return any->control == control; });
  return view == views_.end() ? nullptr : view->get();
}

const View* Views::ViewAt(HWND window) const {
  const auto view = std::ranges::find_if(views_, [&](const auto& any) {
    return any->window == window || (window != nullptr && ::IsChild(any->window, window) != 0);
  });
  return view == views_.end() ? nullptr : view->get();
}

Box Views::BoxOf(const View& view, std::function<Extent()> needs) const {
  Box box{.kind = Box::Kind::Leaf};
  box.needs = std::move(needs);
  box.seen = [&view] { return IsThere(view.control); };
  box.put = [&view](const Place& place) {
    ::SetWindowPos(view.window, nullptr, place.left, place.top, place.width, place.height,
                   SWP_NOZORDER | SWP_NOACTIVATE);
  };
  return box;
}

}  // namespace mirelo::windows
