#include "diagnostics/CFormRestore.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "automation/number.h"
#include "core/CAppSettings.h"
#include "core/known_setting.h"
#include "forms/form.h"
#include "host/desktop.h"
#include "host/host.h"

namespace mirelo {

namespace {

using forms::Form;
using host::Desktop;
using host::WindowPlacement;
using host::WindowRectangle;

constexpr std::int32_t kNothingSaved = -1;

Desktop& TheDesktop() { return host::Host::Current().desktop(); }

std::int32_t Pixels(std::int32_t twips) {
  return RoundToInt32(static_cast<double>(twips) / host::kTwipsPerPixel);
}

bool IsMinimized(std::int32_t state) { return state == 2 || state == 6 || state == 7; }

// The state in which a form opens that is not shown yet; none to leave it as it is.
std::optional<Form::State> OpeningState(std::int32_t state) {
  switch (state) {
    case 2:
    case 6:
    case 7:
      return Form::State::Minimized;
    case 3:
      return Form::State::Maximized;
    case 8:
    case 10:
      return std::nullopt;
    default:  // 1, 5 and 9 say so; 4 and all others are taken for it
      return Form::State::Normal;
  }
}

bool IsSizable(const Form& form) {
  return form.BorderStyle() == Form::Border::Sizable || form.BorderStyle() == Form::Border::SizableToolWindow;
}

void CenterPlacement(WindowPlacement& placement) {
  if (placement.state != WindowPlacement::kNormal) return;
  const auto desktop = TheDesktop().GetDesktopPlacement();
  if (!desktop) return;
  const WindowRectangle& screen = desktop->normal;
  WindowRectangle& window = placement.normal;
  const std::int32_t width = window.right - window.left;
  const std::int32_t height = window.bottom - window.top;
  window.left = (screen.right - screen.left - width) / 2;
  window.top = (screen.bottom - screen.top - height) / 2;
  window.right = window.left + width;
  window.bottom = window.top + height;
}

// The values of one form's section. Reading one that is absent or no number is 0.
class SavedValues {
 public:
  SavedValues(CAppSettings& settings, std::string section)
      : settings_(settings), section_(std::move(section)) {}

  std::int32_t Read(const char* key, std::string_view default_value = "") const {
    return RoundToInt32(Val(settings_.GetSetting(section_, key, Variant(default_value)).ToText()));
  }
  void Write(const char* key, std::int32_t value) { settings_.SaveSetting(section_, key, value); }

 private:
  CAppSettings& settings_;
  std::string section_;
};

}  // namespace

void CFormRestore::Init(CAppSettings* AppSettings, bool CenteredByDefault) {
  if (AppSettings == nullptr) throw Errors::InvalidAppSettings();
  AppSettings_ = AppSettings;
  CenteredByDefault_ = CenteredByDefault;
}

void CFormRestore::KeyName(std::string value) {
  if (value.empty()) throw Errors::InvalidKeyName();
  KeyName_ = std::move(value);
}

void CFormRestore::GetPosition(Form& form) {
  const SavedValues saved(Settings(), SectionOf(form));
  const std::int32_t state =
      saved.Read("WindowState", catalogue::DialogDefault(catalogue::kWindows, "WindowState"));
  if (state > kNothingSaved) {
    TheDesktop().SetWindowPlacement(form, SavedPlacement(form, state));
  } else if (CenteredByDefault_) {
    Center(form);
  }
}

WindowPlacement CFormRestore::SavedPlacement(Form& form, std::int32_t state) const {
  WindowPlacement placement;
  placement.state = StateToRestore(form, state);
  const SavedValues saved(Settings(), SectionOf(form));
  placement.min_x = saved.Read("MinPosX");
  placement.min_y = saved.Read("MinPosY");
  placement.max_x = saved.Read("MaxPosX");
  placement.max_y = saved.Read("MaxPosY");
  placement.normal.left = saved.Read("NormalPosLeft");
  placement.normal.top = saved.Read("NormalPosTop");
  if (IsSizable(form)) {
    placement.normal.right = saved.Read("NormalPosRight");
    placement.normal.bottom = saved.Read("NormalPosBottom");
  } else {  // a form of fixed size takes no other
    placement.normal.right = AddChecked(placement.normal.left, Pixels(form.Width()));
    placement.normal.bottom = AddChecked(placement.normal.top, Pixels(form.Height()));
  }
  return placement;
}

std::int32_t CFormRestore::StateToRestore(Form& form, std::int32_t state) const {
  if (IsMinimized(state) && NeverStartMinimized_) state = WindowPlacement::kNormal;
  if (form.Visible()) return state;
  const auto opening = OpeningState(state);
  if (!opening) return WindowPlacement::kHidden;
  form.WindowState(*opening);
  return state;
}

void CFormRestore::Center(Form& form) {
  auto placement = TheDesktop().GetWindowPlacement(form);
  if (!placement) return;
  CenterPlacement(*placement);
  // A form that is not shown stays hidden and opens in the state that it has.
  placement->state = form.Visible() ? WindowPlacement::kShown : WindowPlacement::kHidden;
  TheDesktop().SetWindowPlacement(form, *placement);
}

void CFormRestore::SavePosition(Form& form) {
  SavedValues saved(Settings(), SectionOf(form));
  const auto placement = TheDesktop().GetWindowPlacement(form);
  if (!placement) return;
  saved.Write("WindowState", placement->state);
  saved.Write("MinPosX", placement->min_x);
  saved.Write("MinPosY", placement->min_y);
  saved.Write("MaxPosX", placement->max_x);
  saved.Write("MaxPosY", placement->max_y);
  saved.Write("NormalPosLeft", placement->normal.left);
  saved.Write("NormalPosTop", placement->normal.top);
  saved.Write("NormalPosRight", placement->normal.right);
  saved.Write("NormalPosBottom", placement->normal.bottom);
}

CAppSettings& CFormRestore::Settings() const {
  if (AppSettings_ == nullptr) throw Errors::FormRestoreNotInitialized();
  return *AppSettings_;
}

std::string CFormRestore::SectionOf(const Form& form) const { return KeyName_ + "\\" + form.Name(); }

namespace Errors {

namespace {
RuntimeError FormRestoreError(std::uint32_t number, const char* description) {
  return RuntimeError(ErrorNumber(number), description, "Mirelo.CFormRestore");
}
}  // namespace

RuntimeError FormRestoreNotInitialized() {
  return FormRestoreError(0x80044499, "Object not properly initialized");
}
RuntimeError InvalidAppSettings() { return FormRestoreError(0x8004449A, "Invalid AppSettings object"); }
RuntimeError InvalidKeyName() { return FormRestoreError(0x8004449B, "Invalid KeyName value"); }

}  // namespace Errors

}  // namespace mirelo
