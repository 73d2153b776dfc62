#include "app/commands/quote_options.h"

#include "app/commands/checks.h"
#include "app/session.h"
#include "command_line/command.h"

namespace mirelo::app {

void QuoteOptions::AddAddress(command_line::Command& command) {
  command.AddOption("--address", address_, "Where QuoteTracker runs, in place of the setting Webaddress")
      .Check(NotAllowedFor("Webaddress"));
}

void QuoteOptions::AddDateFormat(command_line::Command& command) {
  command.AddOption("--date-format", date_format_, "How the column Date is written, in d, m and y")
      .Check(WhyNoDateFormat)
      .ShowDefault();
}

void QuoteOptions::Apply(Session& session) const {
  if (!address_.empty()) session.host().Override("Webaddress", address_);
  session.facade().DovantaFormatUserDate(date_format_);
}

}  // namespace mirelo::app
