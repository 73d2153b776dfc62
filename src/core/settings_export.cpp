#include "core/settings_export.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <set>
#include <utility>

#include "automation/array.h"
#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "automation/visible_text.h"
#include "core/settings_catalogue.h"
#include "host/host.h"
#include "host/registry_transaction.h"

namespace mirelo {

namespace {

constexpr std::string_view kHeading = "# Settings of Mirelo. One value a line: section, key, kind, value.\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";  // some editors put it in front
constexpr std::string_view kText = "text";
constexpr std::string_view kInteger = "integer";

// A file of something else is wrong in every line.
constexpr std::size_t kMostRefusals = 20;

[[noreturn]] void Refuse(const std::string& why) {
  throw RuntimeError(Errors::InvalidProcedureCall().Number(), why);
}

std::int32_t ParseInteger(std::string_view digits) {
  std::int32_t integer = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), integer);
  if (error != std::errc() || end != digits.data() + digits.size()) {
    Refuse("\"" + std::string(digits) + "\" is not a 32-bit integer");
  }
  return integer;
}

Variant ParseValue(std::string_view kind, std::string_view value) {
  if (kind == kText) return Unescaped(value);
  if (kind == kInteger) return ParseInteger(value);
  Refuse("the kind must be \"text\" or \"integer\"");
}

StoredSetting ParseLine(std::string_view line) {
  std::vector<std::string_view> fields;
  Split(line, "\t", fields);
  if (fields.size() != 4) Refuse("four fields parted by tabs are needed");

  const SettingName given{std::string(fields[0]), Unescaped(fields[1])};
  const Setting* setting = FindSetting(given.section, given.key);
  if (setting == nullptr)
    Refuse("there is no setting \"" + ShortSettingName(given.section, given.key) + "\"");
  Variant value = ParseValue(fields[2], fields[3]);
  Variant checked = SettingValue(*setting, value.ToText());
  if (!setting->choices.empty() && value.IfText() != nullptr) value = std::move(checked);
  SettingName name = OwnSpelling(given);
  return {std::move(name.section), std::move(name.key), std::move(value)};
}

}  // namespace

std::vector<StoredSetting> ReadSettings(CAppSettings& store) {
  std::vector<StoredSetting> settings;
  for (const std::string_view section : SettingSections()) {
    Array<std::string> keys;
    if (!store.GetAllKeys(section, keys)) continue;
    for (const std::string& key : keys) {
      if (FindSetting(section, key) == nullptr) continue;
      Variant value = store.GetSetting(section, key, Variant());
      if (!value.IsEmpty()) settings.push_back({std::string(section), key, std::move(value)});
    }
  }
  return settings;
}

std::string ExportSettings(const std::vector<StoredSetting>& settings) {
  std::string text(kHeading);
  for (const StoredSetting& setting : settings) {
    const std::string* words = setting.value.IfText();
    text.append(setting.section).append("\t").append(Escaped(setting.key)).append("\t");
    text.append(words != nullptr ? kText : kInteger).append("\t");
    text.append(words != nullptr ? Escaped(*words) : NumberText(setting.value.ToInt32())).append("\n");
  }
  return text;
}

std::vector<StoredSetting> ParseSettings(std::string_view text) {
  std::vector<StoredSetting> settings;
  std::set<std::pair<std::string, std::string>> seen;  // without regard to case
  std::vector<std::string_view> lines;
  std::vector<std::string> refusals;
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  Split(text, "\n", lines);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::string_view line = lines[i];
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.empty() || line.starts_with('#')) continue;
    try {
      StoredSetting setting = ParseLine(line);
      if (!seen.insert({UCase(setting.section), UCase(setting.key)}).second)
        Refuse("this setting stands here twice");
      settings.push_back(std::move(setting));
    } catch (const RuntimeError& error) {
      refusals.push_back("Line " + std::to_string(i + 1) + ": " + error.Description());
      if (refusals.size() == kMostRefusals) break;
    }
  }
  if (!refusals.empty()) Refuse(Join(refusals, "\n"));
  return settings;
}

void WriteSettings(CAppSettings& store, const std::vector<StoredSetting>& settings) {
  host::RegistryTransaction together(host::Host::Current().registry());
  if (!together.IsUnderWay()) throw Errors::FailedSavingSetting();
  for (const StoredSetting& setting : settings)
    store.SaveSetting(setting.section, setting.key, Variant(setting.value));
  if (together.Commit() != host::RegistryTransaction::End::Stored) throw Errors::FailedSavingSetting();
}

}  // namespace mirelo
