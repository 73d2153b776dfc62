#include "adapters/headless/environment_format.h"

#include <langinfo.h>
#include <locale.h>

#include <cstdlib>
#include <memory>
#include <string_view>
#include <type_traits>

#include "adapters/headless/locale_format.h"

namespace mirelo::headless {

namespace {

std::string NameInEnvironment() {
  for (const char* variable : {"LC_ALL", "LC_TIME"}) {
    const char* value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return value;
  }
  return {};
}

// "de_DE" of "de_DE.ISO-8859-1@euro".
std::string_view WithoutCodeset(std::string_view name) { return name.substr(0, name.find_first_of(".@")); }

bool IsStandard(std::string_view name) {
  const std::string_view place = WithoutCodeset(name);
  return place.empty() || place == "C" || place == "POSIX" || place == "en_US";
}

std::string Utf8Form(std::string_view name) {
  const std::size_t modifier = name.find('@');
  std::string form = std::string(WithoutCodeset(name)) + ".UTF-8";
  if (modifier != std::string_view::npos) form += name.substr(modifier);
  return form;
}

struct FreeLocale {
  void operator()(locale_t locale) const { freelocale(locale); }
};
using Locale = std::unique_ptr<std::remove_pointer_t<locale_t>, FreeLocale>;

Locale Open(const std::string& name) {
  return Locale(newlocale(LC_CTYPE_MASK | LC_TIME_MASK | LC_NUMERIC_MASK, name.c_str(), nullptr));
}

LocaleTexts ReadTexts(locale_t locale) {
  const auto text = [locale](nl_item item) { return std::string(nl_langinfo_l(item, locale)); };
  LocaleTexts texts;
  texts.date_format = text(D_FMT);
  texts.time_format = text(T_FMT);
  texts.twelve_hour_format = text(T_FMT_AMPM);
  texts.decimal_separator = text(RADIXCHAR);
  texts.group_separator = text(THOUSEP);
  texts.am = text(AM_STR);
  texts.pm = text(PM_STR);
  // The items of a kind are numbered in order.
  for (int i = 0; i < 12; ++i) {
    texts.months[static_cast<std::size_t>(i)] = text(MON_1 + i);
    texts.short_months[static_cast<std::size_t>(i)] = text(ABMON_1 + i);
  }
  for (int i = 0; i < 7; ++i) {
    texts.weekdays[static_cast<std::size_t>(i)] = text(DAY_1 + i);
    texts.short_weekdays[static_cast<std::size_t>(i)] = text(ABDAY_1 + i);
  }
  return texts;
}

}  // namespace

RegionalFormat EnvironmentFormat() {
  const std::string name = NameInEnvironment();
  if (IsStandard(name)) return RegionalFormat::Standard();
  return FormatOfLocale(name).value_or(RegionalFormat::Standard());
}

std::optional<RegionalFormat> FormatOfLocale(const std::string& name) {
  for (const std::string& form : {Utf8Form(name), name}) {
    const Locale locale = Open(form);
    if (locale && std::string_view(nl_langinfo_l(CODESET, locale.get())) == "UTF-8") {
      return ToRegionalFormat(ReadTexts(locale.get()));
    }
  }
  return std::nullopt;
}

}  // namespace mirelo::headless
