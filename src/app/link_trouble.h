#pragma once

#include <string>

namespace mirelo::app {

class Session;

// Why the last request to QuoteTracker brought nothing, and what to do about it, in two lines: where it was
// asked, who said so, what came of it, and the next step. Empty where the reply was one of a QuoteTracker, so
// that nothing can be said of the link. A facade must live.
std::string LinkTrouble(Session& session);

// A setting of the link by its key, for people: "HTTPPort, given for this command". `value` is what it was
// when it was used.
std::string SettingInForce(Session& session, const std::string& key, const std::string& value);

}  // namespace mirelo::app
