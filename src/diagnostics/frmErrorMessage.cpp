#include "diagnostics/frmErrorMessage.h"

#include <string>
#include <string_view>

#include "automation/text.h"
#include "core/product.h"
#include "diagnostics/CShell.h"
#include "diagnostics/skipping_frame.h"
#include "host/desktop.h"
#include "host/host.h"

namespace mirelo {

namespace {

struct Escape {
  std::string_view character;
  std::string_view escaped;
};

// What an address cannot hold as it is. A percent sign stays unescaped, and so does all else.
constexpr Escape kEscapes[] = {{"\r\n", "%0A"}, {"\t", "%09"}, {":", "%3A"}, {"/", "%2F"},
                               {"?", "%3F"},    {"=", "%3D"},  {"&", "%26"}};

std::string MailBody(std::string text) {
  for (const Escape& escape : kEscapes) text = Replace(text, escape.character, escape.escaped);
  const std::string rule(20, '-');
  return "%0A%0A" + rule + "%0A" + text + "%0A" + rule;
}

}  // namespace

frmErrorMessage::frmErrorMessage() : Form("frmErrorMessage", "Error") {
  Design(7200, 4800, Border::Sizable);
  elaTitle.Picture("error");
  elaTitleCaption.Caption("An Error occured in ...");
  txtErrorMessage.MultiLine(true);
  btnSend.Picture("send");
  btnIgnore.Picture("ignore");
  btnRetry.Picture("retry");
  btnAbort.Picture("abort");
  btnSend.Click.Subscribe([this] { btnSend_Click(); });
  btnIgnore.Click.Subscribe([this] { Answer("IGNORE"); });
  btnRetry.Click.Subscribe([this] { Answer("RETRY"); });
  btnAbort.Click.Subscribe([this] { Answer("ABORT"); });
}

void frmErrorMessage::ErrorMessage(const std::string& report) {
  SkippingFailures([&](SkippingFrame& frame) {
    STEP(txtErrorMessage.Text(report + "\r\nVersion: " + std::string(ProductVersion())));
  });
}

void frmErrorMessage::Form_Activate() {
  SkippingFailures([&](SkippingFrame& frame) {
    STEP(elaTitleCaption.Caption("An error occurred in " + std::string(kProductTitle)));
    STEP(btnSend.Enabled(!SupportMail_.empty()));
    STEP(host::Host::Current().desktop().Beep());
    STEP(host::Host::Current().desktop().SetForegroundWindow(*this));
    STEP(Tag("ABORT"));  // what stands when no button is pressed
  });
}

void frmErrorMessage::Answer(const char* tag) {
  SkippingFailures([&](SkippingFrame& frame) {
    STEP(Tag(tag));
    STEP(Hide());
  });
}

void frmErrorMessage::btnSend_Click() {
  SkippingFailures([&](SkippingFrame& frame) {
    std::string body;
    STEP(body = MailBody(txtErrorMessage.Text()));
    std::string subject;
    STEP(subject = Replace(elaTitleCaption.Caption(), " ", "%20"));
    std::string address;
    STEP(address = "mailto:" + SupportMail_ + "?subject=" + subject + "&body=" + body);
    STEP(CShell().OpenUrl(address));
  });
}

}  // namespace mirelo
