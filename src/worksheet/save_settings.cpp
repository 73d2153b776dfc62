// What Go does to the settings: the dialog's values are checked, the link to QuoteTracker is tried, and then
// everything is stored.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/cMirelo.h"
#include "core/known_setting.h"
#include "core/message_box.h"
#include "core/setting_names.h"
#include "diagnostics/routine.h"
#include "dialog/column_widths.h"
#include "dialog/frmMirelo.h"
#include "dialog/tabs.h"
#include "dialog/time_zones.h"
#include "host/desktop.h"
#include "worksheet/color_schemes.h"

namespace mirelo {

namespace {

constexpr double kLeastChartPoints = 5;
constexpr double kMostChartPoints = 1200;
static_assert(catalogue::Row(catalogue::kSettings, "ChartPoints").least == kLeastChartPoints &&
                  catalogue::Row(catalogue::kSettings, "ChartPoints").greatest == kMostChartPoints,
              "the catalogue refuses what the dialog does");

constexpr std::int16_t kToStream = 77;
constexpr std::int16_t kToAsk = 78;

constexpr const char* kPointsNotNumeric = "'Number of chart points' must be numeric.";
constexpr const char* kPointsOutOfBounds = "'Number of chart points' must be between 5 and 1200.";
constexpr const char* kFieldEmpty = "Please fill in the 'AdditionalInformation1' field ";
constexpr const char* kFieldName = "AdditionalInformation1";

double NumberIn(const std::string& text) { return Variant(text).ToDouble(); }

Variant Tick(const forms::CheckBox& box) { return std::int32_t{box.Value() == 1 ? 1 : 0}; }

// The text as it stands if it is a number from 0 on, else the default. Readings of a number differ where
// a sign stands behind it, or a separator inside.
template <class Reading>
Variant NotNegative(const std::string& text, Reading number, DialogSetting setting) {
  if (IsNumeric(text) && number(text) >= 0) return text;
  return setting.Default().ToInt32();
}

// A setting and what the dialog gives it.
struct StoredValue {
  const char* key;
  Variant (*value)(const frmMirelo& form);
};

// In the order of storing.
constexpr std::array kStoredValues{
    StoredValue{"Seconds",
                [](const frmMirelo& form) { return NotNegative(form.txtSec.Text(), Val, "Seconds"); }},
    StoredValue{"Style", [](const frmMirelo& form) -> Variant { return form.ComStyle.Text(); }},
    StoredValue{"VerticalTable", [](const frmMirelo& form) { return Tick(form.chkVerTable); }},
    StoredValue{
        "RowsLimit",
        [](const frmMirelo& form) { return NotNegative(form.txtRows.Text(), NumberIn, "RowsLimit"); }},
    StoredValue{"BuildCharts", [](const frmMirelo& form) { return Tick(form.chkBuildCharts); }},
    StoredValue{"ChartStyle", [](const frmMirelo& form) -> Variant { return form.ComChartStyle.Text(); }},
    StoredValue{"ChartPoints",
                [](const frmMirelo& form) {
                  return NotNegative(form.txtChartPoints.Text(), NumberIn, "ChartPoints");
                }},
    StoredValue{
        "txtDecimalPlaces",
        [](const frmMirelo& form) -> Variant { return Variant(form.txtDecimalPlaces.Text()).ToInt16(); }},
    StoredValue{"txtVerticalSheet",
                [](const frmMirelo& form) -> Variant { return form.txtVerticalSheet.Text(); }},
    StoredValue{"ColorPoints", [](const frmMirelo& form) { return Tick(form.chkColorPoints); }},
    StoredValue{"GreyOut", [](const frmMirelo& form) { return Tick(form.chkGreyOut); }},
    StoredValue{"AddYAxis", [](const frmMirelo& form) { return Tick(form.chkAddYAxis); }},
    StoredValue{"HTTPPort", [](const frmMirelo& form) -> Variant { return form.txtHTTPPort.Text(); }},
    StoredValue{"SocketPort", [](const frmMirelo& form) -> Variant { return form.txtSocketPort.Text(); }},
    StoredValue{"Webaddress", [](const frmMirelo& form) -> Variant { return form.txtWebAddress.Text(); }},
    StoredValue{"UpdateEvery", [](const frmMirelo& form) { return Tick(form.chkUpdOrNot); }},
    StoredValue{"DisplayTimezone",
                [](const frmMirelo& form) -> Variant { return form.ComDisplayTimezone.Text(); }},
    StoredValue{"DisplayOffset",
                [](const frmMirelo& form) -> Variant { return form.ComDisplayOffset.Text(); }},
};

// Error 9 for an index that no zone has.
double HoursOf(std::int32_t zone) {
  if (zone < 0 || static_cast<std::size_t>(zone) >= kTimeZones.size()) throw Errors::SubscriptOutOfRange();
  return Val(kTimeZones[static_cast<std::size_t>(zone)].hours);
}

}  // namespace

// The dialog's values while they are checked and stored. The statements are those of
// save_settings_and_create_table.
struct frmMirelo::Saving {
  Frame& frame;
  frmMirelo& form;

  // Whether the values can be committed; the user was told if not.
  bool AcceptValues();
  void Refuse(const std::string& message, std::int32_t tab, forms::Control& control);
  void StoreValues();
  // Stores the displacement that shows times in the chosen zone, worked out from zone and offset.
  void StoreDisplacement();
};

bool frmMirelo::save_settings_and_create_table(bool /*unused*/) {
  return Function("Mirelo.frmMirelo.save_settings_and_create_table", false, [&](Frame& frame, bool& built) {
    // Widths survive whatever becomes of the rest.
    StoreColumnWidths(frame, *this);

    std::vector<std::string> colors;
    STEP(colors = Split(ColorsOfStyle(ComStyle.Text()), ","));
    Saving saving{frame, *this};
    if (!saving.AcceptValues()) return;
    Variant unused_tickers;
    if (frame.test([&] { return !GetPortfolioTickersFromQT(unused_tickers); })) return frame.pop();
    if (frame.test([&] { return chkUpdOrNot.Value() != 0 && Val(txtSec.Text()) == 0; })) {
      STEP(ResultTag_ = kToStream);
    } else {
      STEP(ResultTag_ = kToAsk);
    }

    // One bad value shall not keep the others from being stored.
    frame.ignore_failures();
    saving.StoreValues();
    std::string decimal_format;
    STEP(decimal_format = Facade().DecimalPlacesFormat());
    frame.report_failures();

    if (!CreateQuoteTable(frame, colors, decimal_format)) return;
    STEP(built = true);
    frame.pop();
  });
}

bool frmMirelo::Saving::AcceptValues() {
  if (frame.test([&] { return !IsNumeric(form.txtChartPoints.Text()); })) {
    Refuse(kPointsNotNumeric, kChartingTab, form.txtChartPoints);
    return false;
  }
  if (frame.test([&] {
        return NumberIn(form.txtChartPoints.Text()) > kMostChartPoints ||
               NumberIn(form.txtChartPoints.Text()) < kLeastChartPoints;
      })) {
    Refuse(kPointsOutOfBounds, kChartingTab, form.txtChartPoints);
    return false;
  }
  // In the words of the chart points, and on their tab.
  if (frame.test([&] { return !IsNumeric(form.txtDecimalPlaces.Text()); })) {
    Refuse(kPointsNotNumeric, kChartingTab, form.txtDecimalPlaces);
    return false;
  }
  if (frame.test([&] { return form.ComQuoteSource.Enabled() && form.ComQuoteSource.Text().empty(); })) {
    Refuse(Replace(kFieldEmpty, kFieldName, form.ComQuoteSource.Tag()), kSettingsTab, form.ComQuoteSource);
    return false;
  }
  return true;
}

void frmMirelo::Saving::Refuse(const std::string& message, std::int32_t tab, forms::Control& control) {
  STEP(ShowMessage(message, host::Desktop::kCritical));
  STEP(form.C1TTickersSettings.CurrTab(tab));
  STEP(control.SetFocus());
}

void frmMirelo::Saving::StoreValues() {
  for (const StoredValue& stored : kStoredValues) {
    STEP(form.Store().SaveSetting(catalogue::kSettings, stored.key, stored.value(form)));
  }
  StoreDisplacement();
  if (frame.test([&] { return form.ComQuoteSource.Enabled(); })) {
    STEP(form.Store().SaveSetting(catalogue::kFirstSource, catalogue::kFirstSourceKey,
                                  Variant(form.ComQuoteSource.Text())));
  }
}

void frmMirelo::Saving::StoreDisplacement() {
  double hours = 0;
  double minutes = 0;
  std::int32_t zone = 0;
  STEP(zone = form.ComDisplayTimezone.ListIndex());
  if (zone == std::int32_t{kIndia}) {
    hours = 9;
    minutes = 30;
  } else {
    STEP(hours = HoursOf(zone));
  }

  const std::string offset = form.ComDisplayOffset.Text();
  const std::int32_t colon = InStr(1, offset, ":", Compare::Binary);
  double offset_hours = 0;
  STEP(offset_hours = Val(Left(offset, colon - 1)));  // fails without a colon
  hours += offset_hours;
  const double offset_minutes = Val(Mid(offset, colon + 1));
  // The sign of "-0:30" is lost on its hours, so that its minutes are added.
  minutes += offset_hours < 0 ? -offset_minutes : offset_minutes;

  STEP(form.Store().SaveSetting(catalogue::kSettings, "DisplacementHour", Variant(hours)));
  STEP(form.Store().SaveSetting(catalogue::kSettings, "DisplacementMinute", Variant(minutes)));
}

}  // namespace mirelo
