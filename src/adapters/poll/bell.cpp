#include "adapters/poll/bell.h"

#include <sys/eventfd.h>

namespace mirelo::poll {

Bell Bell::Open() {
  Bell opened;
  opened.descriptor_ = Descriptor::Opened(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK | EFD_SEMAPHORE));
  return opened;
}

void Bell::Ring() { ::eventfd_write(Number(), 1); }

bool Bell::Take() {
  eventfd_t one = 0;
  return ::eventfd_read(Number(), &one) == 0;
}

}  // namespace mirelo::poll
