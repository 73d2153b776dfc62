#include "automation/iso_text.h"

#include <cmath>
#include <cstddef>

namespace mirelo {

namespace {

std::string Padded(int number, std::size_t width) {
  std::string digits = std::to_string(number);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

std::string DayText(const CivilTime& civil) {
  return Padded(civil.year, 4) + '-' + Padded(civil.month, 2) + '-' + Padded(civil.day, 2);
}

std::string TimeText(const CivilTime& civil) {
  return Padded(civil.hour, 2) + ':' + Padded(civil.minute, 2) + ':' + Padded(civil.second, 2);
}

}  // namespace

std::string IsoText(Date date) {
  const CivilTime civil = ToCivil(date);
  if (date.serial >= 0 && date.serial < 1) return TimeText(civil);
  if (std::trunc(date.serial) == date.serial) return DayText(civil);
  return DayText(civil) + 'T' + TimeText(civil);
}

}  // namespace mirelo
