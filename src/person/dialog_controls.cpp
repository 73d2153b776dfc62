#include "person/dialog_controls.h"

#include <algorithm>
#include <array>
#include <vector>

#include "automation/number.h"
#include "automation/text.h"
#include "core/setting_names.h"
#include "dialog/frmColor.h"
#include "dialog/frmMirelo.h"
#include "dialog/palette.h"
#include "dialog/tabs.h"
#include "person/attended_desktop.h"
#include "person/dialog_wishes.h"
#include "person/list_entry.h"

namespace mirelo {

namespace {

constexpr const char* kNone = "None";

void Need(const forms::Control& control, const char* setting) {
  if (!control.IsUsable()) throw Unfulfilled("the dialog has switched this off", setting);
}

void Tick(forms::CheckBox& box, const std::string& value) {
  if (box.Value() != static_cast<int>(Val(value))) box.UserClick();
}

// A number box holds its number inside its bounds by itself.
void Type(forms::TextBox& box, const std::string& value) {
  box.UserEdit(value);
  if (box.Text() != value) throw Unfulfilled("the dialog makes " + box.Text() + " of " + value);
}

std::string Joined(const std::vector<std::string>& choices) {
  std::string text;
  for (const std::string& choice : choices) text += "\n  " + choice;
  return text;
}

void Choose(forms::ComboBox& box, const std::string& value) {
  const auto entry = FindEntry(box.Items(), value);
  if (!entry) throw Unfulfilled("\"" + value + "\" is none of the choices:" + Joined(box.Items()));
  box.UserChoose(static_cast<std::int32_t>(*entry));
}

// A style has a check box for "None" beside it.
void ChooseStyle(forms::CheckBox& box, forms::ComboBox& style, const std::string& value) {
  const bool none = EqualText(value, kNone);
  Tick(box, none ? "0" : "1");
  if (!none) Choose(style, value);
}

void PickColor(const OpenDialog& dialog, forms::Button& button, const std::string& value) {
  const auto color = static_cast<std::int32_t>(Val(value));
  bool picked = false;
  dialog.desktop.Attend("frmColor", [&](forms::Form& form) {
    const auto& cells = dynamic_cast<frmColor&>(form).L1;
    const auto cell = color == kNoFill ? cells.begin()
                                       : std::find_if(cells.begin() + 1, cells.end(), [&](const auto& label) {
                                           return label->BackColor() == color;
                                         });
    if (cell == cells.end()) return;
    (*cell)->UserClick();
    picked = true;
  });
  button.UserPress();
  if (!picked)
    throw Unfulfilled("the palette has no colour " + value + " (red in the low byte; -4142 for none)");
}

// Unfulfilled::setting_to_add.
constexpr char kNeedsUpdates[] = "UpdateEvery=1";
constexpr char kNeedsStreaming[] = "Seconds=0 (a source is chosen for streaming)";
constexpr char kNeedsVertical[] = "VerticalTable=1";
constexpr char kNeedsCharts[] = "BuildCharts=1";
constexpr char kNeedsStyle[] = "ChartStyle=Blue";

// Without a condition: what is usable in every state of the dialog.
template <class Control>
void NeedIf(const Control& control, const char* setting) {
  if (setting != nullptr) Need(control, setting);
}

// The acts of the table below, for a control of the form that is a member of it.
using Act = decltype(DialogControl::act);

template <forms::CheckBox SettingsControls::*box, const char* need = nullptr>
constexpr Act kTick = [](const OpenDialog& dialog, const std::string& value) {
  NeedIf(dialog.form.*box, need);
  Tick(dialog.form.*box, value);
};

template <forms::TextBox SettingsControls::*box, const char* need = nullptr>
constexpr Act kType = [](const OpenDialog& dialog, const std::string& value) {
  NeedIf(dialog.form.*box, need);
  Type(dialog.form.*box, value);
};

template <forms::ComboBox SettingsControls::*box, const char* need = nullptr>
constexpr Act kChoose = [](const OpenDialog& dialog, const std::string& value) {
  NeedIf(dialog.form.*box, need);
  Choose(dialog.form.*box, value);
};

template <forms::CheckBox SettingsControls::*box, forms::ComboBox SettingsControls::*style,
          const char* need = nullptr>
constexpr Act kChooseStyle = [](const OpenDialog& dialog, const std::string& value) {
  NeedIf(dialog.form.*box, need);
  ChooseStyle(dialog.form.*box, dialog.form.*style, value);
};

template <forms::Button SettingsControls::*button>
constexpr Act kPickColor =
    [](const OpenDialog& dialog, const std::string& value) { PickColor(dialog, dialog.form.*button, value); };

void LimitRows(const OpenDialog& dialog, const std::string& value) {
  Need(dialog.form.chkLimitRows, kNeedsVertical);
  Tick(dialog.form.chkLimitRows, Val(value) == 0 ? "0" : "1");
  if (Val(value) != 0) Type(dialog.form.txtRows, value);
}

void TypeChartPoints(const OpenDialog& dialog, const std::string& value) {
  Need(dialog.form.txtChartPoints, dialog.form.chkBuildCharts.Value() == 1 ? kNeedsStyle : kNeedsCharts);
  Type(dialog.form.txtChartPoints, value);
}

using F = SettingsControls;

constexpr std::array kControls{
    DialogControl{"UpdateEvery", kSettingsTab, kTick<&F::chkUpdOrNot>},
    DialogControl{"Seconds", kSettingsTab, kType<&F::txtSec, kNeedsUpdates>},
    DialogControl{catalogue::kFirstSourceKey, kSettingsTab, kChoose<&F::ComQuoteSource, kNeedsStreaming>},
    DialogControl{"Webaddress", kSettingsTab, kType<&F::txtWebAddress>},
    DialogControl{"HTTPPort", kSettingsTab, kType<&F::txtHTTPPort>},
    DialogControl{"SocketPort", kSettingsTab, kType<&F::txtSocketPort>},
    DialogControl{"DisplayTimezone", kSettingsTab, kChoose<&F::ComDisplayTimezone>},
    DialogControl{"DisplayOffset", kSettingsTab, kChoose<&F::ComDisplayOffset>},
    DialogControl{"Style", kSettingsTab, kChooseStyle<&F::chkStyleOrNot, &F::ComStyle>},
    DialogControl{"txtDecimalPlaces", kSettingsTab, kType<&F::txtDecimalPlaces>},
    DialogControl{"txtVerticalSheet", kSettingsTab, kType<&F::txtVerticalSheet>},
    DialogControl{"VerticalTable", kTickersTab, kTick<&F::chkVerTable>},
    DialogControl{"RowsLimit", kTickersTab, LimitRows},
    DialogControl{"BuildCharts", kChartingTab, kTick<&F::chkBuildCharts>},
    DialogControl{"ChartStyle", kChartingTab,
                  kChooseStyle<&F::chkChartStyle, &F::ComChartStyle, kNeedsCharts>},
    DialogControl{"ChartPoints", kChartingTab, TypeChartPoints},
    DialogControl{"ColorPoints", kChartingTab, kTick<&F::chkColorPoints, kNeedsCharts>},
    DialogControl{"GreyOut", kChartingTab, kTick<&F::chkGreyOut, kNeedsCharts>},
    DialogControl{"AddYAxis", kChartingTab, kTick<&F::chkAddYAxis, kNeedsCharts>},
    DialogControl{"FillColorON", kSettingsTab, kPickColor<&F::ButOn>, true},
    DialogControl{"FillColorOFF", kSettingsTab, kPickColor<&F::ButOff>, true},
};

}  // namespace

std::span<const DialogControl> DialogControls() { return kControls; }

const DialogControl* FindDialogControl(std::string_view key) {
  const auto control = std::ranges::find(kControls, key, &DialogControl::key);
  return control == kControls.end() ? nullptr : &*control;
}

}  // namespace mirelo
