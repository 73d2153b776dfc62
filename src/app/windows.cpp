#include "app/windows.h"

#include <memory>
#include <utility>

#include "adapters/qt/busy_internet.h"
#include "adapters/qt/qt_desktop.h"
#include "adapters/qt/qt_loop.h"
#include "app/dialog_attendant.h"
#include "app/failure_reason.h"
#include "linux/linux_host.h"

namespace mirelo::app {

namespace {

class WindowDesktop : public qt::QtDesktop {
 public:
  using qt::QtDesktop::QtDesktop;

  void ShowModal(forms::Form& form) override {
    AddReason(form);
    AttendTo(form);
    qt::QtDesktop::ShowModal(form);
  }
};

}  // namespace

void ShowWindows(LinuxHost& host) {
  auto loop = std::make_unique<qt::QtLoop>();
  host.ShowOn(std::make_unique<WindowDesktop>(*loop));
  host.RunOn(std::move(loop));
  host.FetchThrough([](host::WinInetApi& inner) { return std::make_unique<qt::BusyInternet>(inner); });
}

}  // namespace mirelo::app
