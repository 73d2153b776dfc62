#pragma once

namespace CLI {
class Validator;
}

namespace mirelo::app {

// What command lines are checked for.

// Tickers, one or several as SplitTickers takes them apart.
CLI::Validator IsTickers();

// The name of a watch list.
CLI::Validator IsListNamed();

// A file that a workbook can be written to.
CLI::Validator IsWorkbookName();

// A file that quotes can be kept in beside a workbook.
CLI::Validator IsAlsoFile();

// A time, as ParseDuration reads it.
CLI::Validator IsDuration();

// A format of days, months and years alone. With a time in it each second would be another date, and
// LastVolume begins anew with each date.
CLI::Validator IsDateFormat();

// For options that take the place of a setting: the value is one that the setting allows.
CLI::Validator IsAllowedFor(const char* key);

}  // namespace mirelo::app
