#include "adapters/poll/descriptor.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "automation/runtime_error.h"

namespace mirelo::poll {

Descriptor::Descriptor(int opened) : number_(opened) {
  if (opened >= 0) return;
  if (errno == EMFILE || errno == ENFILE) throw RuntimeError(67, "Too many files");
  throw RuntimeError(440, std::generic_category().message(errno));
}

void Descriptor::Close() {
  if (number_ >= 0) ::close(std::exchange(number_, -1));
}

}  // namespace mirelo::poll
