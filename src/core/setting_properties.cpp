#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "core/cMirelo.h"
#include "core/known_setting.h"
#include "core/mGlobal.h"

namespace mirelo {

namespace {

// A property that shows one setting.
template <class Result>
struct SettingProperty {
  FacadeSetting setting;
  Result (*convert)(const Variant& value);
};

template <class Result>
Result Read(const SettingProperty<Result>& property) {
  try {
    return property.convert(property.setting.In(mGlobal::AppSettings()));
  } catch (...) {
    return property.convert(property.setting.Default());  // as if nothing were stored
  }
}

std::int16_t ToInt16(const Variant& value) { return value.ToInt16(); }
std::int32_t ToInt32(const Variant& value) { return value.ToInt32(); }
std::string ToText(const Variant& value) { return value.ToText(); }
std::string ToTrimmedText(const Variant& value) { return std::string(Trim(value.ToText())); }
std::int32_t ToColorIndex(const Variant& value) { return mGlobal::GetColorIndex(value.ToInt32()); }

std::int32_t ToSeconds(const Variant& value) {
  constexpr const Setting& kRow = catalogue::Row(catalogue::kSettings, "Seconds");
  return std::clamp(value.ToInt32(), kRow.least, kRow.greatest);
}

std::string ToDecimalFormat(const Variant& value) {
  const std::int16_t places = value.ToInt16();
  if (places < 0) throw Errors::InvalidProcedureCall();
  if (places == 0) return "0";
  return "0." + std::string(static_cast<std::size_t>(places), '0');
}

constexpr SettingProperty<std::int32_t> kFillColorFildOff{FacadeSetting("FillColorOFF"), ToColorIndex};
constexpr SettingProperty<std::int32_t> kFillColorFildOn{FacadeSetting("FillColorON"), ToColorIndex};
constexpr SettingProperty<std::string> kTableStyle{FacadeSetting("Style"), ToText};
constexpr SettingProperty<std::string> kUserVerticalSheet{FacadeSetting("txtVerticalSheet"), ToTrimmedText};
constexpr SettingProperty<std::string> kDecimalPlacesFormat{FacadeSetting("txtDecimalPlaces"),
                                                            ToDecimalFormat};
constexpr SettingProperty<std::int16_t> kGreyOut{FacadeSetting("GreyOut"), ToInt16};
constexpr SettingProperty<std::int16_t> kColorPoints{FacadeSetting("ColorPoints"), ToInt16};
constexpr SettingProperty<std::string> kChartStyle{FacadeSetting("ChartStyle"), ToText};
constexpr SettingProperty<std::int32_t> kChartPoints{FacadeSetting("ChartPoints"), ToInt32};
constexpr SettingProperty<std::int16_t> kBuildCharts{FacadeSetting("BuildCharts"), ToInt16};
constexpr SettingProperty<std::int32_t> kRowsLimit{FacadeSetting("RowsLimit"), ToInt32};
constexpr SettingProperty<std::int16_t> kVerticalTable{FacadeSetting("VerticalTable"), ToInt16};
constexpr SettingProperty<std::int32_t> kSeconds{FacadeSetting("Seconds"), ToSeconds};

}  // namespace

std::int32_t cMirelo::FillColorFildOff() const { return Read(kFillColorFildOff); }
std::int32_t cMirelo::FillColorFildOn() const { return Read(kFillColorFildOn); }
std::string cMirelo::TableStyle() const { return Read(kTableStyle); }
std::string cMirelo::UserVerticalSheet() const { return Read(kUserVerticalSheet); }
std::string cMirelo::DecimalPlacesFormat() const { return Read(kDecimalPlacesFormat); }
std::int16_t cMirelo::GreyOut() const { return Read(kGreyOut); }
std::int16_t cMirelo::ColorPoints() const { return Read(kColorPoints); }
std::string cMirelo::ChartStyle() const { return Read(kChartStyle); }
std::int32_t cMirelo::ChartPoints() const { return Read(kChartPoints); }
std::int16_t cMirelo::BuildCharts() const { return Read(kBuildCharts); }
std::int32_t cMirelo::RowsLimit() const { return Read(kRowsLimit); }
std::int16_t cMirelo::VerticalTable() const { return Read(kVerticalTable); }
std::int32_t cMirelo::Seconds() const { return Read(kSeconds); }

}  // namespace mirelo
