#include "core/message_box.h"

#include "host/desktop.h"
#include "host/host.h"

namespace mirelo {

namespace {

constexpr const char* kTitle = "Dovanta2";

}  // namespace

void ShowMessage(const std::string& text, int style) {
  host::Host::Current().desktop().MessageBox(text, style, kTitle);
}

bool Confirm(const std::string& question) {
  using host::Desktop;
  return host::Host::Current().desktop().MessageBox(question, Desktop::kYesNo, kTitle) ==
         Desktop::Answer::Yes;
}

}  // namespace mirelo
