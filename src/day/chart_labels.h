#pragma once

namespace mirelo::host::excel {
class Application;
}

namespace mirelo::day {

// The charts of vertical tables fill their frames, and their titles stand as labels at the foot: on the first
// bars, as the charts are built. This ends the plot area of each such chart above its label.
void UncoverFirstBars(host::excel::Application& application);

}  // namespace mirelo::day
