#pragma once

// The catalogue of settings: each stands here once, with what its readers assume while nothing is stored.
// Readers find their default here while compiling (core/known_setting.h); settings_catalogue.h is for people.
// A new setting is a row of the table, its reader, and the reader's test.

#include <array>
#include <string_view>

#include "core/setting.h"
#include "core/setting_checks.h"
#include "core/setting_names.h"
#include "snapshot/column_names.h"
#include "streaming/first_sources.h"

namespace mirelo {

namespace catalogue {

inline constexpr std::array<std::string_view, 7> kSections{kSettings,
                                                           kWidths,
                                                           kFirstSource,
                                                           kSources,
                                                           kWatchLists,
                                                           "Windows settings\\frmMirelo",
                                                           "Windows settings\\frmColor"};

constexpr std::string_view kHostPhrase = "a host name or an address alone; a port goes into HTTPPort";
constexpr std::string_view kHttpPortPhrase =
    "a port from 1 to 32767, or one above that less 65536: -25536 for 40000";
constexpr std::string_view kFillColorPhrase =
    "a colour of the dialog's palette (red in the low byte), or -4142 for none";

// What people read of each, in the order in which they would look for it.
inline constexpr std::array kRows{
    With(Text(kSettings, "Webaddress", "127.0.0.1", "127.0.0.1",
              "Host name or address where QuoteTracker runs."),
         IsHost, kHostPhrase),
    With(Digits(kSettings, "HTTPPort", kLeast16, kGreatest16, "16239", "16239",
                "Port of QuoteTracker's HTTP interface."),
         IsHttpPort, kHttpPortPhrase),
    Digits(kSettings, "SocketPort", 1, 65535, "16240", "16240", "Port of QuoteTracker's stream."),
    Digits(kSettings, "Seconds", 0, 3600, "10", "60", "Seconds from one update to the next; 0 streams."),
    Tick("UpdateEvery", kNone, "1", "Whether quotes are updated at all: 1, or 0 for once."),
    With(SomeOf(kColumnNames, Text(kSettings, "ListRight", kDefaultListRight, kDefaultListRight,
                                   "The columns of the quote table in their order, parted by commas.")),
         IsNotEmpty, {}),
    SomeOf(kColumnNames, Text(kSettings, "ListLeft", kNone, kDefaultListLeft,
                              "The columns that the quote table leaves out, parted by commas.")),
    OneOf(kColumnNames, Text(kSettings, "VerticalField", kDefaultVerticalField, kNone,
                             "The column that VerticalIndex looks for in the quote table.")),
    Tick("VerticalTable", "1", "1", "Whether tickers have vertical tables on sheets of their own: 1 or 0."),
    With(Text(kSettings, "txtVerticalSheet", "Quotes_Vertical", "Quotes_Vertical",
              "Name of the vertical sheets, in front of the ticker in brackets."),
         IsSheetNameStart, "at most 28 characters, without any of =@#&$%^'!:\\/?*[]"),
    Digits(kSettings, "RowsLimit", 0, 3600, "20", "20", "Rows that a vertical table keeps; 0 for no limit."),
    Number(kSettings, "txtDecimalPlaces", 0, 10, "2", "2", "Decimal places of prices."),
    OneOf(kStyleNames, Text(kSettings, "Style", "Blue", "Blue",
                            "Colours of the quote table: Blue, Green, Yellow or None.")),
    With(Digits(kSettings, "FillColorON", kLeast32, kGreatest32, "32768", "32768",
                "The fill colour On that the macros get as palette index: red in the low byte, -4142 for "
                "none."),
         IsFillColor, kFillColorPhrase),
    With(Digits(kSettings, "FillColorOFF", kLeast32, kGreatest32, "255", "255",
                "The fill colour Off that the macros get as palette index: red in the low byte, -4142 for "
                "none."),
         IsFillColor, kFillColorPhrase),
    Tick("BuildCharts", "1", "0", "Whether vertical tables have charts: 1 or 0."),
    OneOf(kStyleNames, Text(kSettings, "ChartStyle", "Blue", "Blue",
                            "Colours of the charts: Blue, Green, Yellow or None.")),
    Digits(kSettings, "ChartPoints", 5, 1200, "20", "20", "Rows that a chart shows."),
    Tick("ColorPoints", "1", "1", "Whether a chart's points are coloured by their direction: 1 or 0."),
    Tick("GreyOut", "1", "1",
         "Whether a chart's points are grey where nothing changed: 1 or 0. "
         "While nothing is stored, charts are built as with 0."),  // kGreyOutOfNewCharts
    Tick("AddYAxis", kNone, "0", "Whether charts have a value axis: 1 or 0."),
    OneOf(kTimeZoneNames,
          Text(kSettings, "DisplayTimezone", kNone, "(ET) US Eastern", "Time zone that the dialog shows.")),
    OneThat(IsDisplayOffset, "a number of half hours from -23:30 to 23:30, as 1:30 or -0:30",
            Text(kSettings, "DisplayOffset", kNone, "0:00",
                 "Hours and minutes that the dialog adds to the time zone.")),
    Number(kSettings, "DisplacementHour", -48, 48, "0", kNone,
           "Hours that shown times lie ahead of the clock; from zone and offset."),
    Number(kSettings, "DisplacementMinute", -60, 60, "0", kNone,
           "Minutes that shown times lie ahead of the clock; from zone and offset."),
    Setting{kSettings, "Sort_Desc", SettingKind::Text, SettingForm::Boolean, 0, 0, kNone, "False",
            "Which way the dialog last sorted the tickers: True is upwards."},
    Number(kWidths, "", kLeast32, kGreatest32, kNone, "800",
           "Width of the dialog's column of that header, in twips."),
    Text(kFirstSource, kFirstSourceKey, kNone, kFirstSourceText,
         "Quote source that the dialog proposes for streaming."),
    Text(kSources, "", kNone, kNone, "QuoteTracker's file for the quote source of that name."),
    With(Text(kWatchLists, "", kNone, kNone,
              "Tickers of the watch list of that name, parted by commas; none for a list that is gone."),
         AreTickers, "tickers parted by commas, without brackets or blanks"),
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

// The one reader that assumes something else: the charts that Go builds are not greyed while GreyOut is not
// stored, where dialog and facade assume 1. Go stores the dialog's box before it builds, so it shows only
// when that failed, or when Build_Charts is called by itself. That is what Build_Charts has always done for
// who calls it, so it stays.
inline constexpr std::string_view kGreyOutOfNewCharts = "0";

// Columns of the ticker grid that start wider than the others.
inline constexpr std::array<std::string_view, 2> kWideColumns{"Ticker", "Charts (Last & Volume)"};
inline constexpr std::string_view kWideColumn = "1700";

}  // namespace catalogue

}  // namespace mirelo
