#include "app/dialog_controls.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "app/attended_desktop.h"
#include "app/dialog_wishes.h"
#include "automation/number.h"
#include "automation/text.h"
#include "dialog/frmColor.h"
#include "dialog/frmMirelo.h"

namespace mirelo::app {

namespace {

constexpr std::int32_t kTickers = 0;
constexpr std::int32_t kSettings = 1;
constexpr std::int32_t kCharting = 2;

constexpr const char* kNone = "None";
constexpr std::int32_t kNoFill = -4142;

void Need(const forms::Control& control, const char* what_to_do) {
  if (!control.IsUsable()) throw Unfulfilled(std::string("the dialog has switched this off; ") + what_to_do);
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

// The entry that reads so but for case and blanks around it, else the only one that holds the text.
std::optional<std::int32_t> FindEntry(const std::vector<std::string>& entries, const std::string& wanted) {
  std::optional<std::int32_t> holding;
  int count = 0;
  for (std::int32_t i = 0; i < static_cast<std::int32_t>(entries.size()); ++i) {
    const std::string& entry = entries[static_cast<std::size_t>(i)];
    if (EqualText(Trim(entry), Trim(wanted))) return i;
    if (InStr(1, entry, wanted, Compare::Text) == 0) continue;
    holding = i;
    ++count;
  }
  return count == 1 ? holding : std::nullopt;
}

void Choose(forms::ComboBox& box, const std::string& value) {
  const auto entry = value.empty() ? std::nullopt : FindEntry(box.Items(), value);
  if (!entry) throw Unfulfilled("\"" + value + "\" is none of the choices:" + Joined(box.Items()));
  box.UserChoose(*entry);
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

constexpr const char* kNeedsUpdates = "add --set UpdateEvery=1";
constexpr const char* kNeedsStreaming = "a source is chosen for streaming: add --set Seconds=0";
constexpr const char* kNeedsVertical = "add --set VerticalTable=1";
constexpr const char* kNeedsCharts = "add --set BuildCharts=1";
constexpr const char* kNeedsStyle = "add --set ChartStyle=Blue";

constexpr std::array kControls{
    DialogControl{"UpdateEvery", kSettings,
                  [](const OpenDialog& d, const std::string& value) { Tick(d.form.chkUpdOrNot, value); }},
    DialogControl{"Seconds", kSettings,
                  [](const OpenDialog& d, const std::string& value) {
                    Need(d.form.txtSec, kNeedsUpdates);
                    Type(d.form.txtSec, value);
                  }},
    DialogControl{"ComQuoteSource", kSettings,
                  [](const OpenDialog& d, const std::string& value) {
                    Need(d.form.ComQuoteSource, kNeedsStreaming);
                    Choose(d.form.ComQuoteSource, value);
                  }},
    DialogControl{"Webaddress", kSettings,
                  [](const OpenDialog& d, const std::string& value) { Type(d.form.txtWebAddress, value); }},
    DialogControl{"HTTPPort", kSettings,
                  [](const OpenDialog& d, const std::string& value) { Type(d.form.txtHTTPPort, value); }},
    DialogControl{"SocketPort", kSettings,
                  [](const OpenDialog& d, const std::string& value) { Type(d.form.txtSocketPort, value); }},
    DialogControl{
        "DisplayTimezone", kSettings,
        [](const OpenDialog& d, const std::string& value) { Choose(d.form.ComDisplayTimezone, value); }},
    DialogControl{
        "DisplayOffset", kSettings,
        [](const OpenDialog& d, const std::string& value) { Choose(d.form.ComDisplayOffset, value); }},
    DialogControl{"Style", kSettings,
                  [](const OpenDialog& d, const std::string& value) {
                    ChooseStyle(d.form.chkStyleOrNot, d.form.ComStyle, value);
                  }},
    DialogControl{
        "txtDecimalPlaces", kSettings,
        [](const OpenDialog& d, const std::string& value) { Type(d.form.txtDecimalPlaces, value); }},
    DialogControl{
        "txtVerticalSheet", kSettings,
        [](const OpenDialog& d, const std::string& value) { Type(d.form.txtVerticalSheet, value); }},
    DialogControl{"VerticalTable", kTickers,
                  [](const OpenDialog& d, const std::string& value) { Tick(d.form.chkVerTable, value); }},
    DialogControl{"RowsLimit", kTickers,
                  [](const OpenDialog& d, const std::string& value) {
                    Need(d.form.chkLimitRows, kNeedsVertical);
                    Tick(d.form.chkLimitRows, Val(value) == 0 ? "0" : "1");
                    if (Val(value) != 0) Type(d.form.txtRows, value);
                  }},
    DialogControl{"BuildCharts", kCharting,
                  [](const OpenDialog& d, const std::string& value) { Tick(d.form.chkBuildCharts, value); }},
    DialogControl{"ChartStyle", kCharting,
                  [](const OpenDialog& d, const std::string& value) {
                    Need(d.form.chkChartStyle, kNeedsCharts);
                    ChooseStyle(d.form.chkChartStyle, d.form.ComChartStyle, value);
                  }},
    DialogControl{"ChartPoints", kCharting,
                  [](const OpenDialog& d, const std::string& value) {
                    Need(d.form.txtChartPoints,
                         d.form.chkBuildCharts.Value() == 1 ? kNeedsStyle : kNeedsCharts);
                    Type(d.form.txtChartPoints, value);
                  }},
    DialogControl{"ColorPoints", kCharting,
                  [](const OpenDialog& d, const std::string& value) {
                    Need(d.form.chkColorPoints, kNeedsCharts);
                    Tick(d.form.chkColorPoints, value);
                  }},
    DialogControl{"GreyOut", kCharting,
                  [](const OpenDialog& d, const std::string& value) {
                    Need(d.form.chkGreyOut, kNeedsCharts);
                    Tick(d.form.chkGreyOut, value);
                  }},
    DialogControl{"AddYAxis", kCharting,
                  [](const OpenDialog& d, const std::string& value) {
                    Need(d.form.chkAddYAxis, kNeedsCharts);
                    Tick(d.form.chkAddYAxis, value);
                  }},
    DialogControl{"FillColorON", kSettings,
                  [](const OpenDialog& d, const std::string& value) { PickColor(d, d.form.ButOn, value); },
                  true},
    DialogControl{"FillColorOFF", kSettings,
                  [](const OpenDialog& d, const std::string& value) { PickColor(d, d.form.ButOff, value); },
                  true},
};

}  // namespace

std::span<const DialogControl> DialogControls() { return kControls; }

const DialogControl* FindDialogControl(std::string_view key) {
  const auto control = std::ranges::find(kControls, key, &DialogControl::key);
  return control == kControls.end() ? nullptr : &*control;
}

}  // namespace mirelo::app
