#include "streaming/arrival_clock.h"

#include "automation/date.h"
#include "automation/format.h"
#include "automation/regional_format.h"
#include "host/clock.h"
#include "host/host.h"

namespace mirelo {

const ArrivalClock::Texts& ArrivalClock::GetDisplacedDateTime(const std::string& format) {
  host::Clock& clock = host::Host::Current().clock();
  const std::int64_t second = clock.Second();
  if (second_ == second) return texts_;

  const RegionalFormat& regional = clock.Regional();
  const std::string moment = GeneralDate(AddHours(AddMinutes(clock.Now(), minutes_), hours_), regional);
  texts_ = {Format(moment, format, regional), Format(moment, "hh:mm:ss", regional)};
  second_ = second;
  return texts_;
}

}  // namespace mirelo
