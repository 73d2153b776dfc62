#include "app/link_trouble.h"

#include <cmath>
#include <cstdint>
#include <string_view>

#include "app/session.h"
#include "automation/ansi.h"
#include "automation/number.h"
#include "automation/text.h"
#include "automation/visible_text.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "core/setting_names.h"
#include "linux/linux_host.h"
#include "wire/asked_server.h"

namespace mirelo::app {

namespace {

using Failure = host::WinInetApi::Failure;

constexpr std::int32_t kMostShownOfReply = 40;  // characters of a reply

constexpr double kGreatestPort = 65535;

constexpr const char* kCompareHttpPort =
    "Compare HTTPPort with the port of QuoteTracker's HTTP interface in its preferences; mirelo settings set "
    "HTTPPort, or --http-port, gives another.";

struct Trouble {
  std::string what;
  std::string what_to_do;
};

Trouble TroubleOfReply(const wire::AskedServer& asked) {
  const std::string reply = AnsiToText(asked.Beginning());
  if (reply.empty()) return {"the connection was closed without an answer", kCompareHttpPort};
  const std::string line(Left(reply.substr(0, reply.find_first_of("\r\n")), kMostShownOfReply));
  return {"what answers there is no QuoteTracker, or one that is not ready: its answer begins with \"" +
              Visible(line) + "\"",
          kCompareHttpPort};
}

Trouble TroubleOf(Failure failure, const wire::AskedServer& asked) {
  switch (failure) {
    case Failure::UnknownHost:
      return {"no machine of this name is known",
              "Correct the name: mirelo settings set Webaddress, or --address."};
    case Failure::Refused:
      return {"the connection was refused, so nothing listens there",
              "Start QuoteTracker there, switch on its HTTP interface, and compare the port with its "
              "preferences; mirelo settings set HTTPPort, or --http-port, gives another."};
    case Failure::Unreachable:
      return {"no way leads to this machine",
              "See to the network, or correct the address: mirelo settings set Webaddress, or --address."};
    case Failure::TimedOut:
      return {
          "it did not answer in time",
          "See whether that machine is on, and whether a firewall keeps the port; or correct the address: "
          "mirelo settings set Webaddress, or --address."};
    case Failure::NoReply:
      return {"what answers there speaks another language, so it is no QuoteTracker", kCompareHttpPort};
    case Failure::None:
      break;
  }
  return TroubleOfReply(asked);
}

bool IsSame(const std::string& value, const std::string& stored) {
  if (value == stored) return true;
  const auto port = ParseNumber(stored);  // negative for one above 32767
  return port && std::abs(*port) <= kGreatestPort && IsNumeric(value) &&
         static_cast<std::uint16_t>(RoundToInt32(*port)) ==
             static_cast<std::uint16_t>(RoundToInt32(Val(value)));
}

}  // namespace

std::string SettingInForce(LinuxHost& host, const std::set<std::string>& given_here, const std::string& key,
                           const std::string& value) {
  if (given_here.contains(key) || host.IsOverridden(key)) return key + ", given for this command";
  const std::string stored = mGlobal::AppSettings().GetSetting(catalogue::kSettings, key, "").ToText();
  if (IsSame(value, stored)) return key + " of the settings";
  return stored.empty() ? key + " by default" : key + " of the dialog";
}

std::string LinkTrouble(Session& session) {
  return LinkTrouble(session.host(), session.asked(), session.given_here);
}

std::string LinkTrouble(LinuxHost& host, const wire::AskedServer& asked,
                        const std::set<std::string>& given_here) {
  if (asked.Host().empty()) return {};
  const Failure failure = host.internet().LastFailure();
  if (failure == Failure::None && EqualText(Left(asked.Beginning(), 2), "OK")) return {};
  const Trouble trouble = TroubleOf(failure, asked);
  const std::string port = std::to_string(asked.Port());
  return "Asked at " + Visible(asked.Host()) + " (" +
         SettingInForce(host, given_here, "Webaddress", asked.Host()) + "), port " + port + " (" +
         SettingInForce(host, given_here, "HTTPPort", port) + "): " + trouble.what + ".\n" +
         trouble.what_to_do;
}

}  // namespace mirelo::app
