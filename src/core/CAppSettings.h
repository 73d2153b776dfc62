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
class CAppSettings : public Object {
 public:
  using Handle = host::Registry::Key;

  std::string_view TypeName() const override { return "CAppSettings"; }

  // Sets company and application. The company is checked and stored first, so it is kept when the
  // application's name is refused. Errors as for the two setters.
  void Init(std::string_view company_name, std::string_view app_name);

  // The four below keep their old value when the new one is refused.

  // Error 0x8004427D, "Invalid AppName value", for an empty name.
  const std::string& AppName() const { return app_name_; }
  void AppName(std::string_view value);

  // Error 0x8004427E, "Invalid CompanyName value", for an empty name.
  const std::string& CompanyName() const { return company_name_; }
  void CompanyName(std::string_view value);

  // Error 0x8004427F, "Invalid MainBranch value", for an empty name.
  const std::string& MainBranch() const { return main_branch_; }
  void MainBranch(std::string_view value);

  // kCurrentUser or kLocalMachine. Error 0x80044280, "Invalid root key value", for any other.
  Handle RootKey() const { return root_key_; }
  void RootKey(Handle value);

  // Deletes the registry key `key` of the section, or the section's own key when `key` is empty, with its
  // values: not a value, and no key that has keys below it. Error 0x80044282, "Failed deleting the
  // application setting", when the registry refuses.
  void DeleteSetting(std::string_view section, std::string_view key);

  // Fills `keys` with the names of the section's values, lower bound 1, and says whether the section could be
  // opened. An empty section gives true and leaves the array unallocated. A registry that refuses to go on
  // ends the walk, which is true with the names up to there. Raises nothing: an unforeseen failure is false.
  bool GetAllKeys(std::string_view section, Array<std::string>& keys);

  // The value as it was stored, a text or a 32-bit integer, whatever the type of `default_value`; the default
  // when the section or the value is absent or of another kind. A text of no bytes, without even its
  // terminator, is 0x80044284.
  Variant GetSetting(std::string_view section, std::string_view key, const Variant& default_value);

  // Stores a text, a date or a boolean as text, and anything else as the 32-bit integer that it converts to;
  // in that case `value` becomes the integer, also when that cannot be stored then. Error 0x80044281, "Failed
  // saving the application setting", when the registry refuses; 0x80044284 for a value that has no
  // conversion, which comes after the section was made.
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

// What CAppSettings raises, with the source "Mirelo.CAppSettings". Save and delete carry
// "Mirelo.CAppSetting", without the final "s", as callers know it.
namespace Errors {
RuntimeError InvalidAppName();         // 0x8004427D, "Invalid AppName value"
RuntimeError InvalidCompanyName();     // 0x8004427E, "Invalid CompanyName value"
RuntimeError InvalidMainBranch();      // 0x8004427F, "Invalid MainBranch value"
RuntimeError InvalidRootKey();         // 0x80044280, "Invalid root key value"
RuntimeError FailedSavingSetting();    // 0x80044281, "Failed saving the application setting"
RuntimeError FailedDeletingSetting();  // 0x80044282, "Failed deleting the application setting"
RuntimeError AppSettingsFailure();     // 0x80044284, "CAppSettings component failure"
}  // namespace Errors

}  // namespace mirelo
