#include "app/commands/settings_command.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <iostream>
#include <istream>
#include <optional>
#include <string>

#include "app/exit_code.h"
#include "app/failure_reason.h"
#include "app/options.h"
#include "app/session.h"
#include "app/whole_file.h"
#include "automation/runtime_error.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "core/settings_catalogue.h"
#include "core/settings_export.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

namespace {

constexpr const char* kBold = "1";
constexpr std::size_t kLongestImport = std::size_t{16} << 20;

// What is stored, as text; nothing when nothing is.
std::optional<std::string> Stored(CAppSettings& store, const std::string& section, const std::string& key) {
  const Variant value = store.GetSetting(section, key, Variant());
  return value.IsEmpty() ? std::nullopt : std::optional(value.ToText());
}

std::string DefaultText(const Setting& setting) {
  const auto facade = std::string(setting.facade_default.value_or(""));
  auto dialog = std::string(setting.dialog_default.value_or(""));
  if (!setting.facade_default || facade == dialog) return dialog;
  return setting.dialog_default ? facade + " (dialog: " + dialog + ")" : facade;
}

// A setting whose section or key the user's own columns, sources and windows name.
bool HasFreeName(const Setting& setting) { return setting.key.empty() || setting.section.back() == '\\'; }

// Older versions stored what they were given.
void TellWhatNobodyCanUse(const Setting& setting, const std::string& stored) {
  try {
    SettingValue(setting, stored);
  } catch (const RuntimeError&) {
    Out() << "    This value is of no use: it must be " << AllowedValues(setting) << ".\n";
  }
}

void Print(const Setting& setting, const std::string& name, const std::optional<std::string>& stored) {
  const std::string assumed = DefaultText(setting);
  const terminal::ShownText shown(name);
  Out() << (Out().IsTerminal() ? terminal::Painted(shown, kBold) : shown) << " = "
        << stored.value_or(assumed + (assumed.empty() ? "(not set)" : " (default)")) << "\n    "
        << setting.meaning << (stored && !assumed.empty() ? " Default: " + assumed : "") << "\n";
  if (stored) TellWhatNobodyCanUse(setting, *stored);
}

struct Found {
  SettingName name;
  const Setting& setting;
};

Found Find(const std::string& text) {
  const SettingName name = OwnSpelling(ParseSettingName(text));
  const Setting* setting = FindSetting(name.section, name.key);
  if (setting == nullptr) {
    throw RuntimeError(5, "no setting is named \"" + text + "\"; mirelo settings list shows them all");
  }
  return {name, *setting};
}

std::string ReadUpToTheBound(std::istream& stream, const std::string& file) {
  std::string text;
  std::array<char, 65536> piece;
  while (stream.read(piece.data(), piece.size()) || stream.gcount() > 0) {
    text.append(piece.data(), static_cast<std::size_t>(stream.gcount()));
    if (text.size() > kLongestImport)
      throw RuntimeError(53, "cannot read " + file + ": it is longer than 16 MiB, as no settings are");
  }
  return text;
}

std::string ReadAll(const std::string& file) {
  if (file == kStandardStream) return ReadUpToTheBound(std::cin, "the standard input");
  std::ifstream stream(file, std::ios::binary);
  stream.peek();  // a folder can be opened, but not read
  if (stream.bad() || !stream.is_open())
    throw RuntimeError(53, "cannot read " + file + ": " + std::strerror(errno));
  return ReadUpToTheBound(stream, file);
}

// The commands below share its footer, so that is settled before they are added.
command_line::Command AddSettings(command_line::Command& program) {
  auto command = program.AddCommand("settings", "Show and change the settings");
  command.RequireCommand();
  command.Footer(
      "A setting of the section Settings goes by its key (Seconds), one of a section below it by section and "
      "key, parted\n"
      "by a backslash ('WidthField\\Ticker').");
  return command;
}

}  // namespace

SettingsCommand::SettingsCommand(command_line::Command& program, const GlobalOptions& global)
    : global_(global),
      command_(AddSettings(program)),
      list_(command_.AddCommand("list", "Every setting with its value, its default and its meaning")),
      get_(command_.AddCommand("get", "Print the value of a setting, or its default when none is stored")),
      set_(command_.AddCommand("set", "Store a value")),
      delete_(command_.AddCommand("delete", "Put a setting back to its default, which is then stored")),
      export_(command_.AddCommand("export", "Write all stored settings as text")),
      import_(
          command_.AddCommand("import", "Store the settings of such a text, all or, if one is wrong, none")) {
  get_.AddArgument("NAME", name_, "The setting").Require();
  set_.AddArgument("NAME", name_, "The setting").Require();
  set_.AddArgument("VALUE", value_, "The new value; one that no reader could use is refused").Require();
  delete_.AddArgument("NAME", name_, "The setting").Require();
  export_.AddArgument("FILE", file_, "Where to; - is the standard output").ShowDefault();
  import_.AddArgument("FILE", file_, "Where from; - is the standard input").ShowDefault();
}

bool SettingsCommand::IsChosen() const { return command_.IsChosen(); }

int SettingsCommand::Run() {
  Session session(global_);
  session.facade();
  try {
    return Run(mGlobal::AppSettings());
  } catch (const RuntimeError& error) {
    throw WithReason(error);
  }
}

int SettingsCommand::Run(CAppSettings& store) const {
  if (list_.IsChosen()) return List(store);
  if (get_.IsChosen()) return Get(store);
  if (set_.IsChosen()) return Set(store);
  if (delete_.IsChosen()) return Delete(store);
  if (export_.IsChosen()) return Export(store);
  return Import(store);
}

int SettingsCommand::List(CAppSettings& store) const {
  for (const Setting& setting : AllSettings()) {
    if (HasFreeName(setting)) continue;
    const std::string section(setting.section);
    const std::string key(setting.key);
    Print(setting, ShortSettingName(section, key), Stored(store, section, key));
  }
  // Names of the user's own exist as far as they are stored.
  for (const auto& stored : ReadSettings(store)) {
    const Setting* setting = FindSetting(stored.section, stored.key);
    if (setting == nullptr || !HasFreeName(*setting)) continue;
    Print(*setting, ShortSettingName(stored.section, stored.key), stored.value.ToText());
  }
  return kGood;
}

int SettingsCommand::Get(CAppSettings& store) const {
  const auto [name, setting] = Find(name_);
  const auto stored = Stored(store, name.section, name.key);
  const auto fallback = setting.facade_default ? setting.facade_default : setting.dialog_default;
  if (!stored && !fallback) {
    Err() << "error: nothing is stored for " << ShortSettingName(name.section, name.key)
          << ", and it has no default\n";
    return kFailed;
  }
  Out() << stored.value_or(std::string(fallback.value_or(""))) << "\n";
  return kGood;
}

int SettingsCommand::Set(CAppSettings& store) const {
  const auto [name, setting] = Find(name_);
  store.SaveSetting(name.section, name.key, SettingValue(setting, value_));
  return kGood;
}

int SettingsCommand::Delete(CAppSettings& store) const {
  const auto [name, setting] = Find(name_);
  auto value = DefaultValue(setting, name.key);
  if (!value) {
    Err() << "error: " << ShortSettingName(name.section, name.key) << " has no default to go back to\n";
    return kFailed;
  }
  store.SaveSetting(name.section, name.key, std::move(*value));
  return kGood;
}

int SettingsCommand::Export(CAppSettings& store) const {
  const std::string text = ExportSettings(ReadSettings(store));
  if (file_ == kStandardStream) {
    Out() << terminal::Lines(text);
    return kGood;
  }
  WriteWhole(file_, text);
  return kGood;
}

int SettingsCommand::Import(CAppSettings& store) const {
  const auto settings = ParseSettings(ReadAll(file_));
  WriteSettings(store, settings);
  Err() << settings.size() << " settings stored\n";
  return kGood;
}

}  // namespace mirelo::app
