#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

#include "core/setting_names.h"

namespace mirelo {

// How the system writes a setting: the two kinds that the store keeps.
enum class SettingKind { Text, Integer };

// What the readers of a setting can convert. A choice is one of the texts that the setting names or its test
// passes, a list some of them, joined by commas.
enum class SettingForm { Text, WholeNumber, Boolean, Choice, List };

// A setting of the store, for people who look at it or change it without the dialog.
struct Setting {
  // A section ending in a backslash stands for the sections below it, one for each form.
  std::string_view section;
  // Empty where the names are the user's: column headers, names of quote sources.
  std::string_view key;
  SettingKind kind;
  SettingForm form;
  // Bounds of a whole number: what the narrowest reader can take, or what the dialog offers where that is
  // less.
  std::int32_t least;
  std::int32_t greatest;
  // What a reader assumes while nothing is stored: the facade and the stream, which the macros hold, and the
  // dialog. Nothing for one that does not read it or assumes nothing.
  std::optional<std::string_view> facade_default;
  std::optional<std::string_view> dialog_default;
  std::string_view meaning;  // a sentence for people

  // What else a value must be, if anything: one of `choices`, or what `takes` returns true for, which is
  // asked only about values that form and bounds let pass. `allowed` says it to people; without it the phrase
  // is made of the choices, or of form and bounds.
  std::span<const std::string_view> choices = {};
  bool (*takes)(std::string_view text) = nullptr;
  std::string_view allowed = {};
};

// The rows of the catalogue (settings_table.h), by what kind they are of.
namespace catalogue {

using Default = std::optional<std::string_view>;
inline constexpr Default kNone = std::nullopt;

constexpr Setting Text(std::string_view section, std::string_view key, Default facade, Default dialog,
                       std::string_view meaning) {
  return {section, key, SettingKind::Text, SettingForm::Text, 0, 0, facade, dialog, meaning};
}

// A number that the dialog's text boxes store as the text they hold.
constexpr Setting Digits(std::string_view section, std::string_view key, std::int32_t least,
                         std::int32_t greatest, Default facade, Default dialog, std::string_view meaning) {
  return {section, key,    SettingKind::Text, SettingForm::WholeNumber, least, greatest, facade,
          dialog,  meaning};
}

constexpr Setting Number(std::string_view section, std::string_view key, std::int32_t least,
                         std::int32_t greatest, Default facade, Default dialog, std::string_view meaning) {
  return {section, key,    SettingKind::Integer, SettingForm::WholeNumber, least, greatest, facade,
          dialog,  meaning};
}

// The dialog's check boxes take no other number.
constexpr Setting Tick(std::string_view key, Default facade, Default dialog, std::string_view meaning) {
  return Number(kSettings, key, 0, 1, facade, dialog, meaning);
}

// What a row's values must be beyond its form.
constexpr Setting With(Setting row, bool (*takes)(std::string_view), std::string_view allowed) {
  row.takes = takes;
  row.allowed = allowed;
  return row;
}
constexpr Setting OneOf(std::span<const std::string_view> choices, Setting row) {
  row.form = SettingForm::Choice;
  row.choices = choices;
  return row;
}
constexpr Setting OneThat(bool (*takes)(std::string_view), std::string_view allowed, Setting row) {
  row.form = SettingForm::Choice;
  return With(row, takes, allowed);
}
constexpr Setting SomeOf(std::span<const std::string_view> choices, Setting row) {
  row.form = SettingForm::List;
  row.choices = choices;
  return row;
}

inline constexpr std::int32_t kLeast16 = std::numeric_limits<std::int16_t>::min();
inline constexpr std::int32_t kGreatest16 = std::numeric_limits<std::int16_t>::max();
inline constexpr std::int32_t kLeast32 = std::numeric_limits<std::int32_t>::min();
inline constexpr std::int32_t kGreatest32 = std::numeric_limits<std::int32_t>::max();

constexpr Setting Place(std::string_view key, Default dialog, std::string_view meaning) {
  return Number(kWindows, key, kLeast32, kGreatest32, kNone, dialog, meaning);
}

}  // namespace catalogue

}  // namespace mirelo
