#pragma once

#include <cstddef>
#include <string_view>

namespace mirelo {

// What each colour of a chart's list is for, in the order of the list. They are indexes of the spreadsheet's
// palette.
enum class ChartColor : std::size_t {
  AreaFore,
  AreaBack,
  PlotFore,
  PlotBack,
  TitleGround,  // by the change of the day
  TitleText,
  Line,  // of the whole series, by the last change, as the two below
  MarkerGround,
  MarkerEdge,
  RiseLine,  // of a point that lies above the one before it
  FallLine,
  StayLine,
  RiseMarkerGround,
  FallMarkerGround,
  StayMarkerGround,
  RiseMarkerEdge,
  FallMarkerEdge,
  StayMarkerEdge,
};

// The list for these changes, its colours parted by commas. Styles are told apart by their exact names; the
// list is empty for other styles, and for changes that are no numbers.
std::string_view ChartColorList(double change_now, double change_today, std::string_view style);

}  // namespace mirelo
