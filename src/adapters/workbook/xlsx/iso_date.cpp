#include "adapters/workbook/xlsx/iso_date.h"

#include <cstddef>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "automation/date.h"
#include "spreadsheet/calendar.h"

namespace mirelo::workbook {

namespace {

// Numbers of fixed lengths with one separator between them.
template <std::size_t N>
bool TakeFields(std::string_view text, char separator, const std::size_t (&lengths)[N], int (&fields)[N]) {
  for (std::size_t i = 0; i < N; ++i) {
    const auto field = text.size() < lengths[i] ? std::nullopt : ParseWhole<int>(text.substr(0, lengths[i]));
    if (!field || *field < 0) return false;
    fields[i] = *field;
    text.remove_prefix(lengths[i]);
    if (i + 1 == N) break;
    if (text.empty() || text.front() != separator) return false;
    text.remove_prefix(1);
  }
  return text.empty();
}

std::optional<double> ParseDay(std::string_view text) {
  int fields[3];
  if (!TakeFields(text, '-', {4, 2, 2}, fields)) return std::nullopt;
  const auto [year, month, day] = fields;
  if (year < 1900 || month < 1 || month > 12 || day < 1 || day > 31) return std::nullopt;
  return SerialOf(CivilTime{year, month, day, 0, 0, 0});
}

std::optional<double> ParseTime(std::string_view text) {
  if (text.ends_with('Z')) text.remove_suffix(1);
  const std::size_t point = text.find('.');
  double fraction = 0;
  if (point != std::string_view::npos) {
    const auto parsed = ParseWhole<double>(text.substr(point));
    if (!parsed || !(*parsed >= 0 && *parsed < 1)) return std::nullopt;
    fraction = *parsed;
  }
  int fields[3];
  if (!TakeFields(text.substr(0, point), ':', {2, 2, 2}, fields)) return std::nullopt;
  const auto [hour, minute, second] = fields;
  if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return (hour * 3600 + minute * 60 + second + fraction) / kSecondsPerDay;
}

}  // namespace

std::optional<double> ParseIsoDate(std::string_view text) {
  const std::size_t mark = text.find('T');
  const bool has_day = text.find('-') != std::string_view::npos;
  if (!has_day) return ParseTime(mark == 0 ? text.substr(1) : text);
  const auto day = ParseDay(text.substr(0, mark));
  if (!day || mark == std::string_view::npos) return day;
  const auto time = ParseTime(text.substr(mark + 1));
  if (!time) return std::nullopt;
  return *day + *time;
}

}  // namespace mirelo::workbook
