#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <variant>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/cMirelo.h"
#include "core/mGlobal.h"

namespace mirelo {

namespace {

// A property that shows one setting.
template <class Result>
struct SettingProperty {
  const char* key;
  // Passed to the store, which hands it back as it is; converted like a value then.
  std::variant<const char*, std::int16_t, std::int32_t> if_absent;
  Result (*convert)(const Variant& value);
  std::conditional_t<std::is_same_v<Result, std::string>, const char*, Result> on_failure;
};

template <class Result>
Result Read(const SettingProperty<Result>& property) {
  try {
    const Variant if_absent = std::visit([](auto value) { return Variant(value); }, property.if_absent);
    return property.convert(mGlobal::AppSettings().GetSetting("Settings", property.key, if_absent));
  } catch (...) {
    return property.on_failure;
  }
}

std::int16_t ToInt16(const Variant& value) { return value.ToInt16(); }
std::int32_t ToInt32(const Variant& value) { return value.ToInt32(); }
std::string ToText(const Variant& value) { return value.ToText(); }
std::string ToTrimmedText(const Variant& value) { return std::string(Trim(value.ToText())); }
std::int32_t ToColorIndex(const Variant& value) { return mGlobal::GetColorIndex(value.ToInt32()); }
std::int32_t ToSeconds(const Variant& value) { return std::clamp(value.ToInt32(), 0, 3600); }

std::string ToDecimalFormat(const Variant& value) {
  const std::int16_t places = value.ToInt16();
  if (places < 0) throw Errors::InvalidProcedureCall();
  if (places == 0) return "0";
  return "0." + std::string(static_cast<std::size_t>(places), '0');
}

constexpr SettingProperty<std::int32_t> kFillColorFildOff{"FillColorOFF", "255", ToColorIndex, 3};
constexpr SettingProperty<std::int32_t> kFillColorFildOn{"FillColorON", "32768", ToColorIndex, 10};
constexpr SettingProperty<std::string> kTableStyle{"Style", "Blue", ToText, "Blue"};
constexpr SettingProperty<std::string> kUserVerticalSheet{"txtVerticalSheet", "Quotes_Vertical",
                                                          ToTrimmedText, "Quotes_Vertical"};
constexpr SettingProperty<std::string> kDecimalPlacesFormat{"txtDecimalPlaces", std::int16_t{2},
                                                            ToDecimalFormat, "0.00"};
constexpr SettingProperty<std::int16_t> kGreyOut{"GreyOut", 1, ToInt16, 1};
constexpr SettingProperty<std::int16_t> kColorPoints{"ColorPoints", 1, ToInt16, 1};
constexpr SettingProperty<std::string> kChartStyle{"ChartStyle", "Blue", ToText, "Blue"};
constexpr SettingProperty<std::int32_t> kChartPoints{"ChartPoints", std::int16_t{20}, ToInt32, 20};
constexpr SettingProperty<std::int16_t> kBuildCharts{"BuildCharts", 1, ToInt16, 1};
constexpr SettingProperty<std::int32_t> kRowsLimit{"RowsLimit", std::int16_t{20}, ToInt32, 20};
constexpr SettingProperty<std::int16_t> kVerticalTable{"VerticalTable", 1, ToInt16, 1};
constexpr SettingProperty<std::int32_t> kSeconds{"Seconds", std::int16_t{10}, ToSeconds, 10};

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
