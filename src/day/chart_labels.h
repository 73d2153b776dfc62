#pragma once

namespace mirelo::host::excel {
class Application;
}

namespace mirelo::day {

// As they are built, the plots of the charts of vertical tables fill their frames, and the charts' titles
// stand as labels at their foot, where they cover the first bars. This ends each plot above the title.
void UncoverFirstBars(host::excel::Application& application);

}  // namespace mirelo::day
