#include "core/settings_catalogue.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "automation/ansi.h"
#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "core/known_setting.h"
#include "dialog/sheet_names.h"
#include "host/registry_names.h"

namespace mirelo {

namespace {

static_assert(catalogue::Row(catalogue::kSettings, "txtVerticalSheet").allowed.ends_with(kNotInSheetNames),
              "the phrase names the characters that the check refuses");

bool StartsWith(std::string_view text, std::string_view start) {
  return text.size() >= start.size() && EqualText(text.substr(0, start.size()), start);
}

bool IsInSection(const Setting& setting, std::string_view section) {
  if (!setting.section.ends_with('\\')) return EqualText(setting.section, section);
  return StartsWith(section, setting.section) &&
         std::any_of(catalogue::kSections.begin(), catalogue::kSections.end(),
                     [&](auto known) { return EqualText(known, section); });
}

// Text that the registry gives back as it was given.
bool IsOfThePage(std::string_view text) { return AnsiToText(TextToAnsi(text)) == text; }

bool CanBeAName(std::string_view key) {
  return !key.empty() && key.find('\0') == key.npos && IsOfThePage(key) &&
         TextToAnsi(key).size() <= host::kLongestValueName;
}

[[noreturn]] void Refuse(const Setting& setting, std::string_view text) {
  const std::string description = "\"" + std::string(text) + "\" is not allowed here: the value must be ";
  throw RuntimeError(Errors::InvalidProcedureCall().Number(), description + AllowedValues(setting));
}

bool HasForm(const Setting& setting, const Variant& value) {
  try {
    if (setting.form == SettingForm::Boolean) value.ToBoolean();
    if (setting.form != SettingForm::WholeNumber) return true;
    const std::int32_t number = value.ToInt32();
    return number >= setting.least && number <= setting.greatest;
  } catch (const RuntimeError&) {
    return false;
  }
}

// The setting's own spelling of one of its choices.
std::string Chosen(const Setting& setting, std::string_view text) {
  const auto choice = std::find_if(setting.choices.begin(), setting.choices.end(),
                                   [&](auto known) { return EqualText(known, Trim(text)); });
  if (choice == setting.choices.end()) Refuse(setting, text);
  return std::string(*choice);
}

// Who writes a list puts blanks behind its commas, which the readers would take for parts of the names.
std::string InOwnSpelling(const Setting& setting, std::string_view text) {
  if (setting.form == SettingForm::Choice)
    return setting.choices.empty() ? std::string(Trim(text)) : Chosen(setting, text);
  if (setting.form != SettingForm::List) return std::string(text);
  if (Trim(text).empty()) return {};
  std::vector<std::string> names;
  for (const std::string& name : Split(text, ",")) names.push_back(Chosen(setting, name));
  return Join(names, ",");
}

std::string Listed(std::span<const std::string_view> choices) {
  std::string list;
  for (const std::string_view& choice : choices) {
    if (!list.empty()) list += &choice == &choices.back() ? " or " : ", ";
    list += choice;
  }
  return list;
}

// The longest section that a name starts with; empty for none.
std::string_view LongestSectionOf(std::string_view name) {
  std::string_view longest;
  for (const std::string_view section : catalogue::kSections) {
    if (section.size() > longest.size() && StartsWith(name, std::string(section) + "\\")) longest = section;
  }
  return longest;
}

bool StartsWide(std::string_view column) {
  return std::any_of(catalogue::kWideColumns.begin(), catalogue::kWideColumns.end(),
                     [&](auto wide) { return EqualText(wide, column); });
}

}  // namespace

std::span<const Setting> AllSettings() { return catalogue::kRows; }

std::span<const std::string_view> SettingSections() { return catalogue::kSections; }

const Setting* FindSetting(std::string_view section, std::string_view key) {
  const auto setting =
      std::find_if(catalogue::kRows.begin(), catalogue::kRows.end(), [&](const Setting& candidate) {
        if (!IsInSection(candidate, section)) return false;
        return candidate.key.empty() ? CanBeAName(key) : EqualText(candidate.key, key);
      });
  return setting == catalogue::kRows.end() ? nullptr : &*setting;
}

SettingName ParseSettingName(std::string_view name) {
  std::string full(name);
  if (LongestSectionOf(full).empty()) full.insert(0, std::string(catalogue::kSettings) + "\\");
  const std::string_view section = LongestSectionOf(full);
  return {std::string(section), full.substr(section.size() + 1)};
}

SettingName OwnSpelling(const SettingName& name) {
  SettingName own = name;
  for (const std::string_view section : catalogue::kSections) {
    if (EqualText(section, name.section)) own.section = section;
  }
  const Setting* setting = FindSetting(name.section, name.key);
  if (setting != nullptr && !setting->key.empty()) own.key = setting->key;
  return own;
}

std::string ShortSettingName(std::string_view section, std::string_view key) {
  const std::string full = std::string(section) + "\\" + std::string(key);
  const std::string settings = std::string(catalogue::kSettings) + "\\";
  return StartsWith(full, settings) ? full.substr(settings.size()) : full;
}

std::string AllowedValues(const Setting& setting) {
  if (!setting.allowed.empty()) return std::string(setting.allowed);
  switch (setting.form) {
    case SettingForm::Boolean:
      return "True or False";
    case SettingForm::WholeNumber:
      return "a whole number from " + NumberText(setting.least) + " to " + NumberText(setting.greatest);
    case SettingForm::Choice:
      return Listed(setting.choices);
    case SettingForm::List:
      return "a list, parted by commas, of " + Listed(setting.choices);
    case SettingForm::Text:
      break;
  }
  return "a text of the characters of Windows-1252";
}

Variant SettingValue(const Setting& setting, std::string_view text) {
  if (!IsOfThePage(text) || !HasForm(setting, Variant(text))) Refuse(setting, text);
  Variant given(InOwnSpelling(setting, text));
  if (setting.takes != nullptr && !setting.takes(given.ToText())) Refuse(setting, text);
  if (setting.kind == SettingKind::Integer) return given.ToInt32();
  if (setting.form == SettingForm::Boolean) return Variant(given.ToBoolean()).ToText();
  return given;
}

std::optional<Variant> DefaultValue(const Setting& setting, std::string_view key) {
  if (setting.section == catalogue::kWidths && StartsWide(key))
    return SettingValue(setting, catalogue::kWideColumn);
  const std::optional<std::string_view> text =
      setting.facade_default ? setting.facade_default : setting.dialog_default;
  if (!text) return std::nullopt;
  return SettingValue(setting, *text);
}

}  // namespace mirelo
