#pragma once

#include <memory>

#include "app/interrupt.h"
#include "app/linux_host.h"
#include "core/cMirelo.h"
#include "host/host.h"

namespace mirelo::app {

struct GlobalOptions;

// What a command needs around it: this machine installed as the host, one live facade, Ctrl-C when it is
// wanted.
class Session {
 public:
  explicit Session(const GlobalOptions& options);

  LinuxHost& host() { return host_; }
  // Made when first asked for.
  cMirelo& facade();
  // From the first call on, Ctrl-C is a request that this object tells of; before, it ends the program as
  // usual.
  Interrupt& interrupt();

 private:
  LinuxHost host_;
  host::HostScope scope_{host_};
  std::unique_ptr<Interrupt> interrupt_;
  std::unique_ptr<cMirelo> facade_;
};

}  // namespace mirelo::app
