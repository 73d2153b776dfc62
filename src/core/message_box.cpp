#include "core/message_box.h"

#include "host/desktop.h"
#include "host/host.h"

namespace mirelo {

void ShowMessage(const std::string& text, int style) {
  host::Host::Current().desktop().MessageBox(text, style, "Dovanta2");
}

}  // namespace mirelo
