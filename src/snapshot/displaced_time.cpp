#include <string>

#include "automation/date.h"
#include "automation/format.h"
#include "automation/regional_format.h"
#include "core/cMirelo.h"
#include "host/clock.h"
#include "host/host.h"

namespace mirelo {

// The moment goes through its text form on the way to both texts, so a machine whose general form leaves
// something out leaves it out of them as well.
void cMirelo::GetDisplacedDateTime(std::string& DateText, std::string& TimeText) const {
  host::Clock& clock = host::Host::Current().clock();
  const RegionalFormat& regional = clock.Regional();
  const Date moment = AddHours(AddMinutes(clock.Now(), displacement_minute_), displacement_hour_);
  const std::string text = GeneralDate(moment, regional);
  DateText = Format(text, format_user_date_, regional);
  TimeText = Format(text, "hh:mm:ss", regional);
}

}  // namespace mirelo
