#pragma once

#include <optional>
#include <string_view>

#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/settings_table.h"

// clang before 15 breaks down over immediate constructors in classes and lambdas. There the lookup may happen
// at run time, which finds the same: whether it can fail, g++ and later clangs have proved.
#if defined(__clang__) && __clang_major__ < 15
#define MIRELO_AT_COMPILE_TIME constexpr
#else
#define MIRELO_AT_COMPILE_TIME consteval
#endif

namespace mirelo {

// A setting of the section "Settings" as a reader knows it: its key, and what that reader assumes while
// nothing is stored. FacadeSetting and DialogSetting look both up in the catalogue while compiling; a key
// that is not there, or without a default for the reader, does not compile.
class KnownSetting {
 public:
  constexpr std::string_view Key() const { return key_; }

  // A text, whatever kind of value the system stores; readers convert what they read anyway.
  Variant Default() const { return Variant(default_); }

  // What the store holds, or the default. Errors of CAppSettings::GetSetting.
  Variant In(CAppSettings& store) const { return store.GetSetting(catalogue::kSettings, key_, Default()); }

 protected:
  MIRELO_AT_COMPILE_TIME KnownSetting(std::string_view key, std::string_view assumed)
      : key_(key), default_(assumed) {}

 private:
  std::string_view key_;
  std::string_view default_;
};

// A lookup that fails throws, which nothing may while compiling: so the program does not compile.
namespace catalogue {

MIRELO_AT_COMPILE_TIME const Setting& Row(std::string_view section, std::string_view key) {
  for (const Setting& row : kRows) {
    if (row.section == section && row.key == key) return row;
  }
  throw "the catalogue has no such setting";
}

MIRELO_AT_COMPILE_TIME std::string_view FacadeDefault(std::string_view section, std::string_view key) {
  return Row(section, key).facade_default.value();
}

MIRELO_AT_COMPILE_TIME std::string_view DialogDefault(std::string_view section, std::string_view key) {
  return Row(section, key).dialog_default.value();
}

}  // namespace catalogue

// As the facade and the stream read it.
class FacadeSetting : public KnownSetting {
 public:
  explicit MIRELO_AT_COMPILE_TIME FacadeSetting(const char* key)
      : KnownSetting(key, catalogue::FacadeDefault(catalogue::kSettings, key)) {}
};

// As the dialog and what it does at Go read it.
class DialogSetting : public KnownSetting {
 public:
  MIRELO_AT_COMPILE_TIME DialogSetting(const char* key)  // so that readers name the key alone
      : KnownSetting(key, catalogue::DialogDefault(catalogue::kSettings, key)) {}
};

// As the builder of charts reads it: its one default of its own, and why, stands in the catalogue.
class NewChartsGreyOut : public KnownSetting {
 public:
  MIRELO_AT_COMPILE_TIME NewChartsGreyOut()
      : KnownSetting(catalogue::Row(catalogue::kSettings, "GreyOut").key, catalogue::kGreyOutOfNewCharts) {}
};

}  // namespace mirelo

#undef MIRELO_AT_COMPILE_TIME
