#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "automation/variant.h"
#include "core/settings_table.h"

namespace mirelo {

// Section and key of a value, as the user wrote them; the store finds both without regard to case.
struct SettingName {
  std::string section;
  std::string key;
};

// All settings, in the order in which a person would look for them.
std::span<const Setting> AllSettings();

// The sections that hold them, each by its full name.
std::span<const std::string_view> SettingSections();

// The setting of that section and key, found without regard to case; null for one that the system does not
// have.
const Setting* FindSetting(std::string_view section, std::string_view key);

// A name as a person gives it: a key of the section "Settings" ("Seconds"), or a section and a key parted by
// a backslash, where "Settings\" may be left out ("WidthField\Ticker",
// "Settings\QuoteSource\First\ComQuoteSource").
SettingName ParseSettingName(std::string_view name);

// The name in the system's own spelling, as far as the system has one.
SettingName OwnSpelling(const SettingName& name);

// The name in that form, as short as it can be.
std::string ShortSettingName(std::string_view section, std::string_view key);

// What a value of the setting may be, as a phrase: "a whole number from 0 to 32767".
std::string AllowedValues(const Setting& setting);

// The value to store for a text that a person gives, of the setting's kind, and of its spelling where it has
// choices. Error 5 when no reader could use it or the registry could not hold it; the description says what
// is allowed.
Variant SettingValue(const Setting& setting, std::string_view text);

// The value that restores the default. The registry has no call that removes a single value, so the default
// is written instead. Where facade and dialog assume different defaults it is the facade's, by which the
// macros run; the dialog then shows that one. Nothing for a setting without default: the file of a
// quote source, a window's corner.
std::optional<Variant> DefaultValue(const Setting& setting, std::string_view key);

}  // namespace mirelo
