#include "automation/iso_text.h"

#include <cmath>
#include <cstddef>

namespace mirelo {

namespace {

std::string Digits(int number, std::size_t width) {
  std::string digits = std::to_string(number);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

std::string DayText(const CivilTime& civil) {
  return Digits(civil.year, 4) + '-' + Digits(civil.month, 2) + '-' + Digits(civil.day, 2);
}

std::string TimeText(const CivilTime& civil) {
  return Digits(civil.hour, 2) + ':' + Digits(civil.minute, 2) + ':' + Digits(civil.second, 2);
}

}  // namespace

std::string IsoText(Date date) {
  const CivilTime civil = ToCivil(date);
  if (date.serial >= 0 && date.serial < 1) return TimeText(civil);
  if (std::trunc(date.serial) == date.serial) return DayText(civil);
  return DayText(civil) + 'T' + TimeText(civil);
}

}  // namespace mirelo
