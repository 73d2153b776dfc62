#include "adapters/poll/descriptor.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "automation/runtime_error.h"

namespace mirelo::poll {

Descriptor Descriptor::Opened(int result) {
  if (result >= 0) return Descriptor(result);
  if (errno == EMFILE || errno == ENFILE) throw RuntimeError(67, "Too many files");
  throw RuntimeError(440, std::generic_category().message(errno));
}

void Descriptor::Close() {
  if (number_ >= 0) ::close(std::exchange(number_, -1));
}

}  // namespace mirelo::poll
