#include "day/quote_rows.h"

#include "automation/text.h"
#include "core/known_setting.h"
#include "core/mGlobal.h"

namespace mirelo::day {

std::vector<std::string> VisibleColumns() {
  return Split(FacadeSetting("ListRight").In(mGlobal::AppSettings()).ToText(), ",");
}

}  // namespace mirelo::day
