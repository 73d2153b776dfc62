#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "automation/variant.h"
#include "core/CAppSettings.h"

namespace mirelo {

// All settings as one text, to carry them to another machine or keep them as a copy.
//
// One line is one value: section, key, kind ("text" or "integer") and value, parted by tabs. The key and a
// value of kind text are escaped (automation/visible_text.h), so that the text holds no other controls than
// its tabs and line feeds. An integer is written in decimal digits. The text is UTF-8 and ends with a line
// feed. Empty lines and lines that begin with "#" mean nothing.
//
//   Settings    Seconds    text       60
//   Settings\WidthField    Ticker    integer    1700

// One value of the store: a text or a 32-bit integer.
struct StoredSetting {
  std::string section;
  std::string key;
  Variant value;
  friend bool operator==(const StoredSetting&, const StoredSetting&) = default;
};

// What the store holds of the settings that the system has, section by section and in the order in which the
// values were made. A value that the store does not read, being of another kind, is left out. Errors of
// CAppSettings.
std::vector<StoredSetting> ReadSettings(CAppSettings& store);

std::string ExportSettings(const std::vector<StoredSetting>& settings);

// The settings of such a text. The whole of it is checked: that each line has its four fields and names a
// setting that the system has, that the setting's readers can use the value, and that none stands there
// twice. Error 5 for a text that does not pass; the description has a line for each that is wrong, up to
// twenty, which begins with "Line" and its number.
std::vector<StoredSetting> ParseSettings(std::string_view text);

// Stores all of them, or none when one fails or the process ends meanwhile. Errors of CAppSettings.
void WriteSettings(CAppSettings& store, const std::vector<StoredSetting>& settings);

}  // namespace mirelo
