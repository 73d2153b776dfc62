#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/array.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "host/registry.h"

namespace mirelo {

// The settings store: everything that the system keeps is read and written through it, as named values of a
// section in the registry of the installed host. A section is the key RootKey,
// MainBranch\CompanyName\AppName\section; a section name may hold backslashes itself
// ("Settings\QuoteSource\List"). Texts cross the ANSI code page on their way, so a character outside it is
// stored as "?".
//
// Any failure that a member does not name is raised as 0x80044284, "CAppSettings component failure".
class CAppSettings {
 public:
  using Handle = host::Registry::Key;

  // Sets company and application. The company is checked and stored first, so it is kept when the
  // application's name is refused. Errors 0x8004427E, 0x8004427D.
  void Init(std::string_view company_name, std::string_view app_name);

  const std::string& AppName() const { return app_name_; }
  void AppName(std::string_view value);  // error 0x8004427D for an empty name, which leaves the old one

  const std::string& CompanyName() const { return company_name_; }
  void CompanyName(std::string_view value);  // error 0x8004427E for an empty name

  const std::string& MainBranch() const { return main_branch_; }
  void MainBranch(std::string_view value);  // error 0x8004427F for an empty name

  Handle RootKey() const { return root_key_; }
  void RootKey(Handle value);  // error 0x80044280 for all but kCurrentUser and kLocalMachine

  // Deletes the registry key `key` of the section, or the section's own key when `key` is empty, with its
  // values: not a value, and no key that has keys below it. Error 0x80044282 when the registry refuses.
  void DeleteSetting(std::string_view section, std::string_view key);

  // Fills `keys` with the names of the section's values, lower bound 1, and says whether the section is
  // there. An empty section gives true and leaves the array unallocated. Raises nothing: a failure is false.
  bool GetAllKeys(std::string_view section, Array<std::string>& keys);

  // The value as it was stored, a text or a 32-bit integer, whatever the type of `default_value`; the default
  // when the section or the value is absent or of another kind. A text of no bytes, without even its
  // terminator, is 0x80044284.
  Variant GetSetting(std::string_view section, std::string_view key, const Variant& default_value);

  // Stores a text, a date or a boolean as text, and anything else as the 32-bit integer that it converts to;
  // in that case `value` becomes the integer. Error 0x80044281 when the registry refuses, 0x80044284 for a
  // value that has no conversion.
  void SaveSetting(std::string_view section, std::string_view key, Variant& value);
  // For values that nobody looks at afterwards.
  void SaveSetting(std::string_view section, std::string_view key, Variant&& value) {
    SaveSetting(section, key, value);
  }

 private:
  std::string Path(std::string_view section) const;

  Handle root_key_ = host::Registry::kCurrentUser;
  std::string main_branch_ = "Software";
  std::string company_name_ = "Kestrin";
  std::string app_name_ = "Tomvale";
};

// What CAppSettings raises. Save and delete carry a source without the final "s", as callers know it.
namespace Errors {
RuntimeError InvalidAppName();         // 0x8004427D, Mirelo.CAppSettings
RuntimeError InvalidCompanyName();     // 0x8004427E, Mirelo.CAppSettings
RuntimeError InvalidMainBranch();      // 0x8004427F, Mirelo.CAppSettings
RuntimeError InvalidRootKey();         // 0x80044280, Mirelo.CAppSettings
RuntimeError FailedSavingSetting();    // 0x80044281, Mirelo.CAppSetting
RuntimeError FailedDeletingSetting();  // 0x80044282, Mirelo.CAppSetting
RuntimeError AppSettingsFailure();     // 0x80044284, Mirelo.CAppSettings
}  // namespace Errors

}  // namespace mirelo
