#pragma once

#include <set>
#include <string>

namespace mirelo {
class LinuxHost;
namespace wire {
class AskedServer;
}
}  // namespace mirelo

namespace mirelo::app {

class Session;

// Why the last request to QuoteTracker brought nothing, and what to do about it, in two lines: which address
// and port were asked, where these come from, what came of it, and the next step. Empty where QuoteTracker
// did reply, so that the link is not to blame. A facade must exist meanwhile, as its settings are read.
std::string LinkTrouble(Session& session);

// The same outside of a session. `asked` is a part of the host's HTTP client; `given_here` are the keys of
// settings that hold for this process alone.
std::string LinkTrouble(LinuxHost& host, const wire::AskedServer& asked,
                        const std::set<std::string>& given_here);

// Where a setting of the link comes from, for people: "HTTPPort, given for this command". `value` is the one
// that was used.
std::string SettingInForce(LinuxHost& host, const std::set<std::string>& given_here, const std::string& key,
                           const std::string& value);

}  // namespace mirelo::app
