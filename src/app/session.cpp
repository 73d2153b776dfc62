#include "app/session.h"

#include "app/options.h"

namespace mirelo::app {

// The registry is opened here: later, the settings store would hide why it cannot be.
Session::Session(const GlobalOptions& options) : host_(options.registry) { host_.registry(); }

cMirelo& Session::facade() {
  if (!facade_) facade_ = std::make_unique<cMirelo>();
  return *facade_;
}

Interrupt& Session::interrupt() {
  if (!interrupt_) interrupt_ = std::make_unique<Interrupt>(host_.loop());
  return *interrupt_;
}

}  // namespace mirelo::app
