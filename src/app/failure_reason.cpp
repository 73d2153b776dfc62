#include "app/failure_reason.h"

#include <string>

#include "core/CAppSettings.h"
#include "diagnostics/frmErrorMessage.h"
#include "host/host.h"
#include "host/registry.h"

namespace mirelo::app {

namespace {

// Empty for a text that tells of no failure of the store.
std::string ReasonOf(const std::string& text) {
  for (const RuntimeError& failure : {Errors::FailedSavingSetting(), Errors::FailedDeletingSetting()}) {
    if (text.find(failure.Description()) != std::string::npos) {
      return host::Host::Current().registry().LastFailure();
    }
  }
  return {};
}

}  // namespace

std::string WithReason(const std::string& text) {
  const std::string reason = ReasonOf(text);
  return reason.empty() ? text : text + ". " + reason;
}

RuntimeError WithReason(const RuntimeError& error) {
  return RuntimeError(error.Number(), WithReason(error.Description()), error.Source());
}

void AddReason(forms::Form& form) {
  auto* report = dynamic_cast<frmErrorMessage*>(&form);
  if (report == nullptr) return;
  const std::string reason = ReasonOf(report->ErrorMessage());
  if (!reason.empty()) report->txtErrorMessage.Text(report->ErrorMessage() + "\r\n" + reason);
}

}  // namespace mirelo::app
