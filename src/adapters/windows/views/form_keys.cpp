#include "adapters/windows/views/form_keys.h"

#include <algorithm>
#include <map>
#include <vector>

namespace mirelo::windows {

namespace {

std::vector<HWND> forms_with_keys;  // that are there
HHOOK hook = nullptr;
std::map<WPARAM, MSG> on_their_way;
WPARAM last_name = 0;

}  // namespace

FormKeys::FormKeys(HWND form) : form_(form) {
  forms_with_keys.push_back(form_);
  if (hook == nullptr) hook = ::SetWindowsHookExW(WH_GETMESSAGE, Look, nullptr, ::GetCurrentThreadId());
}

FormKeys::~FormKeys() {
  std::erase(forms_with_keys, form_);
  if (!forms_with_keys.empty()) return;
  ::UnhookWindowsHookEx(hook);
  hook = nullptr;
  on_their_way.clear();
}

// Whoever takes the message hands it out, and so it is readdressed here: it would be handled twice otherwise,
// or within a hook, in which nothing may wait.
LRESULT CALLBACK FormKeys::Look(int code, WPARAM removed, LPARAM message) {
  auto& taken = *reinterpret_cast<MSG*>(message);
  const bool is_key = taken.message >= WM_KEYFIRST && taken.message <= WM_KEYLAST;
  if (code == HC_ACTION && removed == PM_REMOVE && is_key) {
    const HWND form = ::GetAncestor(taken.hwnd, GA_ROOT);
    if (std::ranges::find(forms_with_keys, form) != forms_with_keys.end()) {
      on_their_way[++last_name] = taken;
      taken.hwnd = form;
      taken.message = kKey;
      taken.wParam = last_name;
    }
  }
  return ::CallNextHookEx(nullptr, code, removed, message);
}

MSG FormKeys::Take(WPARAM name) {
  const auto found = on_their_way.find(name);
  if (found == on_their_way.end()) return {};
  const MSG message = found->second;
  on_their_way.erase(found);
  return message;
}

}  // namespace mirelo::windows
