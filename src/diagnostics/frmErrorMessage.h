#pragma once

#include <string>

#include "forms/button.h"
#include "forms/form.h"
#include "forms/simple_controls.h"
#include "forms/text_box.h"

namespace mirelo {

// The dialog in which a failure is reported and the person asked what to do with it. Show it modally, and
// read the Tag: "ABORT", "RETRY", "IGNORE", or "" when it was closed by its close box.
//
// Nothing in here is reported when it fails: a failure inside the error dialog must not start a new report.
class frmErrorMessage : public forms::Form {
 public:
  frmErrorMessage();

  void Form_Activate() override;

  // The address for the send button, which is off while this is empty.
  void SupportMail(std::string address) { SupportMail_ = std::move(address); }

  // The report as shown: what was set, and behind it the line "Version: " with the product's version.
  const std::string& ErrorMessage() const { return txtErrorMessage.Text(); }
  void ErrorMessage(const std::string& report);

  forms::Panel elaControls{*this, "elaControls", nullptr};
  forms::Panel elaInfo{*this, "elaInfo", &elaControls};
  forms::Panel elaTitle{*this, "elaTitle", &elaInfo};
  forms::Panel elaTitleCaption{*this, "elaTitleCaption", &elaTitle};
  forms::TextBox txtErrorMessage{*this, "txtErrorMessage", &elaInfo};
  forms::Panel elaButtons{*this, "elaButtons", &elaControls};
  forms::Button btnSend{*this, "btnSend", &elaButtons, "Send to Support"};
  forms::Button btnIgnore{*this, "btnIgnore", &elaButtons, "Ignore"};
  forms::Button btnRetry{*this, "btnRetry", &elaButtons, "Retry"};
  forms::Button btnAbort{*this, "btnAbort", &elaButtons, "Abort"};

 private:
  void Answer(const char* tag);
  void btnSend_Click();

  std::string SupportMail_;
};

}  // namespace mirelo
