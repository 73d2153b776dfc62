#include "automation/regional_format.h"

#include "automation/format.h"

namespace mirelo {

const RegionalFormat& RegionalFormat::Standard() {
  static const RegionalFormat standard;
  return standard;
}

std::string ShortDate(Date date, const RegionalFormat& format) {
  return Format(date, format.short_date, format);
}

std::string LongTime(Date date, const RegionalFormat& format) {
  return Format(date, format.long_time, format);
}

std::string GeneralDate(Date date, const RegionalFormat& format) {
  const CivilTime civil = ToCivil(date);
  const bool midnight = civil.hour == 0 && civil.minute == 0 && civil.second == 0;
  const bool day_zero = civil.year == 1899 && civil.month == 12 && civil.day == 30;
  if (day_zero) return LongTime(date, format);
  if (midnight) return ShortDate(date, format);
  return ShortDate(date, format) + " " + LongTime(date, format);
}

}  // namespace mirelo
