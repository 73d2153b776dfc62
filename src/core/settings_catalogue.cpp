#include "core/settings_catalogue.h"

#include <algorithm>
#include <array>
#include <limits>

#include "automation/ansi.h"
#include "automation/number.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "host/registry_names.h"
#include "streaming/first_sources.h"

namespace mirelo {

namespace {

constexpr std::string_view kSettings = "Settings";
constexpr std::string_view kWidths = "Settings\\WidthField";
constexpr std::string_view kFirstSource = "Settings\\QuoteSource\\First";
constexpr std::string_view kSources = "Settings\\QuoteSource\\List";
constexpr std::string_view kWindows = "Windows settings\\";  // one section for each form that keeps its place

constexpr std::array<std::string_view, 6> kSections{
    kSettings, kWidths, kFirstSource, kSources, "Windows settings\\frmMirelo", "Windows settings\\frmColor"};

using Default = std::optional<std::string_view>;
constexpr Default kNone = std::nullopt;

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

constexpr std::int32_t kLeast16 = std::numeric_limits<std::int16_t>::min();
constexpr std::int32_t kGreatest16 = std::numeric_limits<std::int16_t>::max();
constexpr std::int32_t kLeast32 = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kGreatest32 = std::numeric_limits<std::int32_t>::max();

constexpr Setting Place(std::string_view key, Default dialog, std::string_view meaning) {
  return Number(kWindows, key, kLeast32, kGreatest32, kNone, dialog, meaning);
}

constexpr std::array kCatalogue{
    Text(kSettings, "Webaddress", "127.0.0.1", "127.0.0.1", "Host name or address where QuoteTracker runs."),
    Digits(kSettings, "HTTPPort", 0, kGreatest16, "16239", "16239", "Port of QuoteTracker's HTTP interface."),
    Digits(kSettings, "SocketPort", 0, 65535, "16240", "16240", "Port of QuoteTracker's stream."),
    Digits(kSettings, "Seconds", kLeast32, kGreatest32, "10", "60",
           "Seconds from one update to the next; 0 streams. Below 0 counts as 0, above 3600 as 3600."),
    Tick("UpdateEvery", kNone, "1", "Whether quotes are updated at all: 1, or 0 for once."),
    Text(kSettings, "ListRight", "Ticker,Last,Change,Bid,Ask,Date,Time",
         "Ticker,Last,Change,Bid,Ask,Date,Time",
         "The columns of the quote table in their order, parted by commas."),
    Text(kSettings, "ListLeft", kNone,
         "Tick,Volume,High,Low,BidSize,AskSize,LastVolume,AvgTrade,NumTrades,Open,52w Low,52w High",
         "The columns that the quote table leaves out, parted by commas."),
    Text(kSettings, "VerticalField", "Last", kNone,
         "The column that VerticalIndex looks for in the quote table."),
    Tick("VerticalTable", "1", "1", "Whether tickers have vertical tables on sheets of their own: 1 or 0."),
    Text(kSettings, "txtVerticalSheet", "Quotes_Vertical", "Quotes_Vertical",
         "Name of the vertical sheets, in front of the ticker in brackets."),
    Digits(kSettings, "RowsLimit", kLeast32, kGreatest32, "20", "20",
           "Rows that a vertical table keeps; 0 for no limit."),
    Number(kSettings, "txtDecimalPlaces", 0, kGreatest16, "2", "2", "Decimal places of prices."),
    Text(kSettings, "Style", "Blue", "Blue", "Colours of the quote table: Blue, Green, Yellow or None."),
    Digits(kSettings, "FillColorON", kLeast32, kGreatest32, "32768", "32768",
           "The fill colour On that the macros get as palette index: red in the low byte, -4142 for none."),
    Digits(kSettings, "FillColorOFF", kLeast32, kGreatest32, "255", "255",
           "The fill colour Off that the macros get as palette index: red in the low byte, -4142 for none."),
    Tick("BuildCharts", "1", "0", "Whether vertical tables have charts: 1 or 0."),
    Text(kSettings, "ChartStyle", "Blue", "Blue", "Colours of the charts: Blue, Green, Yellow or None."),
    Digits(kSettings, "ChartPoints", kLeast16, kGreatest16, "20", "20", "Rows that a chart shows."),
    Tick("ColorPoints", "1", "1", "Whether a chart's points are coloured by their direction: 1 or 0."),
    Tick("GreyOut", "1", "1",
         "Whether a chart's points are grey where nothing changed: 1 or 0. "
         "While nothing is stored, charts are built as with 0."),
    Tick("AddYAxis", kNone, "0", "Whether charts have a value axis: 1 or 0."),
    Text(kSettings, "DisplayTimezone", kNone, "(ET) US Eastern", "Time zone that the dialog shows."),
    Text(kSettings, "DisplayOffset", kNone, "0:00",
         "Hours and minutes that the dialog adds to the time zone."),
    Number(kSettings, "DisplacementHour", kLeast32, kGreatest32, "0", kNone,
           "Hours that shown times lie ahead of the clock; from zone and offset."),
    Number(kSettings, "DisplacementMinute", kLeast32, kGreatest32, "0", kNone,
           "Minutes that shown times lie ahead of the clock; from zone and offset."),
    Setting{kSettings, "Sort_Desc", SettingKind::Text, SettingForm::Boolean, 0, 0, kNone, "False",
            "Which way the dialog last sorted the tickers: True is upwards."},
    Number(kWidths, "", kLeast32, kGreatest32, kNone, "800",
           "Width of the dialog's column of that header, in twips."),
    Text(kFirstSource, "ComQuoteSource", kNone, kFirstSourceText,
         "Quote source that the dialog proposes for streaming."),
    Text(kSources, "", kNone, kNone, "QuoteTracker's file for the quote source of that name."),
    Place("WindowState", "-1", "How the window was shown; -1 for a window that keeps no place."),
    Place("MinPosX", kNone, "Left of the window's symbol."),
    Place("MinPosY", kNone, "Top of the window's symbol."),
    Place("MaxPosX", kNone, "Left of the window at its largest."),
    Place("MaxPosY", kNone, "Top of the window at its largest."),
    Place("NormalPosLeft", kNone, "Left edge of the window, in pixels."),
    Place("NormalPosTop", kNone, "Top edge of the window, in pixels."),
    Place("NormalPosRight", kNone, "Right edge of the window, in pixels."),
    Place("NormalPosBottom", kNone, "Bottom edge of the window, in pixels."),
};

// Columns that start wider than the others.
constexpr std::array<std::string_view, 2> kWideColumns{"Ticker", "Charts (Last & Volume)"};
constexpr std::int32_t kWideColumn = 1700;

bool StartsWith(std::string_view text, std::string_view start) {
  return text.size() >= start.size() && EqualText(text.substr(0, start.size()), start);
}

bool IsInSection(const Setting& setting, std::string_view section) {
  if (!setting.section.ends_with('\\')) return EqualText(setting.section, section);
  return StartsWith(section, setting.section) &&
         std::any_of(kSections.begin(), kSections.end(),
                     [&](auto known) { return EqualText(known, section); });
}

// Text that the registry gives back as it was given.
bool IsOfThePage(std::string_view text) { return AnsiToText(TextToAnsi(text)) == text; }

bool CanBeAName(std::string_view key) {
  return !key.empty() && key.find('\0') == key.npos && IsOfThePage(key) &&
         TextToAnsi(key).size() <= host::kLongestValueName;
}

// Whether the readers of the setting convert the value.
bool ReadersTake(const Setting& setting, const Variant& value) {
  try {
    if (setting.form == SettingForm::Boolean) value.ToBoolean();
    if (setting.form != SettingForm::WholeNumber) return true;
    const std::int32_t number = value.ToInt32();
    return number >= setting.least && number <= setting.greatest;
  } catch (const RuntimeError&) {
    return false;
  }
}

// The longest section that a name starts with; empty for none.
std::string_view LongestSectionOf(std::string_view name) {
  std::string_view longest;
  for (const std::string_view section : kSections) {
    if (section.size() > longest.size() && StartsWith(name, std::string(section) + "\\")) longest = section;
  }
  return longest;
}

bool StartsWide(std::string_view column) {
  return std::any_of(kWideColumns.begin(), kWideColumns.end(),
                     [&](auto wide) { return EqualText(wide, column); });
}

}  // namespace

std::span<const Setting> AllSettings() { return kCatalogue; }

std::span<const std::string_view> SettingSections() { return kSections; }

const Setting* FindSetting(std::string_view section, std::string_view key) {
  const auto setting = std::find_if(kCatalogue.begin(), kCatalogue.end(), [&](const Setting& candidate) {
    if (!IsInSection(candidate, section)) return false;
    return candidate.key.empty() ? CanBeAName(key) : EqualText(candidate.key, key);
  });
  return setting == kCatalogue.end() ? nullptr : &*setting;
}

SettingName ParseSettingName(std::string_view name) {
  std::string full(name);
  if (LongestSectionOf(full).empty()) full.insert(0, std::string(kSettings) + "\\");
  const std::string_view section = LongestSectionOf(full);
  return {std::string(section), full.substr(section.size() + 1)};
}

SettingName OwnSpelling(const SettingName& name) {
  SettingName own = name;
  for (const std::string_view section : kSections) {
    if (EqualText(section, name.section)) own.section = section;
  }
  const Setting* setting = FindSetting(name.section, name.key);
  if (setting != nullptr && !setting->key.empty()) own.key = setting->key;
  return own;
}

std::string ShortSettingName(std::string_view section, std::string_view key) {
  const std::string full = std::string(section) + "\\" + std::string(key);
  const std::string settings = std::string(kSettings) + "\\";
  return StartsWith(full, settings) ? full.substr(settings.size()) : full;
}

std::string AllowedValues(const Setting& setting) {
  switch (setting.form) {
    case SettingForm::Boolean:
      return "True or False";
    case SettingForm::WholeNumber:
      return "a whole number from " + NumberText(setting.least) + " to " + NumberText(setting.greatest);
    case SettingForm::Text:
      break;
  }
  return "a text of the characters of Windows-1252";
}

Variant SettingValue(const Setting& setting, std::string_view text) {
  Variant given(text);
  if (!IsOfThePage(text) || !ReadersTake(setting, given)) {
    const std::string description = "\"" + std::string(text) + "\" is not allowed here: the value must be ";
    throw RuntimeError(Errors::InvalidProcedureCall().Number(), description + AllowedValues(setting));
  }
  if (setting.kind == SettingKind::Integer) return given.ToInt32();
  if (setting.form == SettingForm::Boolean) return Variant(given.ToBoolean()).ToText();
  return given;
}

std::optional<Variant> DefaultValue(const Setting& setting, std::string_view key) {
  if (setting.section == kWidths && StartsWide(key)) return Variant(kWideColumn);
  const Default text = setting.facade_default ? setting.facade_default : setting.dialog_default;
  if (!text) return std::nullopt;
  return SettingValue(setting, *text);
}

}  // namespace mirelo
