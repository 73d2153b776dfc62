#include "app/windows.h"

#include <memory>
#include <utility>

#include "adapters/qt/busy_internet.h"
#include "adapters/qt/qt_desktop.h"
#include "adapters/qt/qt_loop.h"
#include "linux/linux_host.h"

namespace mirelo::app {

void ShowWindows(LinuxHost& host) {
  auto loop = std::make_unique<qt::QtLoop>();
  host.ShowOn(std::make_unique<qt::QtDesktop>(*loop));
  host.RunOn(std::move(loop));
  host.FetchThrough([](host::WinInetApi& inner) { return std::make_unique<qt::BusyInternet>(inner); });
}

}  // namespace mirelo::app
