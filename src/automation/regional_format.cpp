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

std::string GeneralDate(Date date, const RegionalFormat& format) { return Format(date, "c", format); }

}  // namespace mirelo
