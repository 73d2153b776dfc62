#include "host/host.h"

#include "automation/runtime_error.h"

namespace mirelo::host {

namespace {
Host* installed = nullptr;
}

Host& Host::Current() {
  if (installed == nullptr) throw Errors::ObjectNotSet();
  return *installed;
}

HostScope::HostScope(Host& host) : previous_(installed) { installed = &host; }

HostScope::~HostScope() { installed = previous_; }

}  // namespace mirelo::host
