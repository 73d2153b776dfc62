#include "app/stream_watch.h"

#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "app/link_trouble.h"
#include "automation/ansi.h"
#include "automation/number.h"
#include "automation/text.h"
#include "automation/visible_text.h"
#include "core/known_setting.h"
#include "core/mGlobal.h"
#include "host/wininet_api.h"
#include "linux/linux_host.h"
#include "wire/observed_sockets.h"

namespace mirelo::app {

namespace {

using host::WinInetApi;

constexpr std::string_view kGreeting = "OK<";
constexpr std::int32_t kMostShownOfGreeting = 40;  // characters of what came
constexpr std::int32_t kPatienceOverHttp = 2'000;  // milliseconds
constexpr const char* kHttpBegins = "HTTP/";
constexpr const char* kCompareSocketPort =
    " Compare SocketPort with the port of QuoteTracker's stream in its preferences; mirelo settings set "
    "SocketPort, or --socket-port, gives another.";

std::string FirstLine(std::string_view text) {
  return Visible(Left(std::string(text.substr(0, text.find_first_of("\r\n"))), kMostShownOfGreeting));
}

}  // namespace

StreamWatch::StreamWatch(LinuxHost& host, std::set<std::string> given_here)
    : machine_(host),
      given_here_(std::move(given_here)),
      host_(FacadeSetting("Webaddress").In(mGlobal::AppSettings()).ToText()),
      port_(FacadeSetting("SocketPort").In(mGlobal::AppSettings()).ToText()) {
  auto& sockets = machine_.observed_sockets();
  on_connected_ = sockets.Connected.Subscribe([this] { OnConnected(); });
  on_received_ =
      sockets.Received.Subscribe([this](std::span<const std::uint8_t> bytes) { OnReceived(bytes); });
  on_dropped_ = sockets.Dropped.Subscribe([this](const std::string&) { OnDropped(); });
  on_hang_up_ = machine_.HangsUp.Subscribe([this] { hung_up_ = true; });
}

StreamWatch::~StreamWatch() {
  auto& sockets = machine_.observed_sockets();
  sockets.Connected.Unsubscribe(on_connected_);
  sockets.Received.Unsubscribe(on_received_);
  sockets.Dropped.Unsubscribe(on_dropped_);
  machine_.HangsUp.Unsubscribe(on_hang_up_);
  machine_.loop().StopTimer(patience_);
}

void StreamWatch::OnConnected() {
  auto& loop = machine_.loop();
  loop.StopTimer(patience_);
  connected_ = true;
  greeted_ = false;
  greeting_.clear();
  patience_ = loop.StartTimer(kPatience, [this] { OnSilence(); });
}

void StreamWatch::OnReceived(std::span<const std::uint8_t> bytes) {
  if (greeted_ || found_another_) return;
  greeting_.append(bytes.begin(), bytes.end());
  if (greeting_.size() < kGreeting.size() && kGreeting.starts_with(greeting_)) return;
  machine_.loop().StopTimer(patience_);
  greeted_ = greeting_.starts_with(kGreeting);
  if (greeted_) return;
  const std::string line = FirstLine(AnsiToText(greeting_));
  TellAnother(greeting_.starts_with(kHttpBegins)
                  ? "What answers there is a web server, not QuoteTracker's stream."
                  : "What answers there is not QuoteTracker's stream: it begins "
                    "with \"" +
                        line + "\".");
}

// A connection that did not come about has said by itself why.
void StreamWatch::OnDropped() {
  machine_.loop().StopTimer(patience_);
  if (!connected_) Tell(Place() + kCompareSocketPort);
  connected_ = false;
}

void StreamWatch::OnSilence() {
  hung_up_ = false;
  const std::string reply = ReplyOverHttp();
  if (hung_up_) return;
  if (EqualText(Left(reply, 2), "OK"))
    return TellAnother(
        "What answers there is QuoteTracker's HTTP interface; its stream has a port of its own.");
  if (!reply.empty()) return TellAnother("What answers there is a web server, not QuoteTracker's stream.");
  Tell(Place() + " Something listens there, and says nothing, where QuoteTracker greets at once." +
       kCompareSocketPort);
}

void StreamWatch::TellAnother(const std::string& what) {
  found_another_ = true;
  Tell(Place() + " " + what + kCompareSocketPort);
}

void StreamWatch::Tell(const std::string& text) {
  if (told_.insert(text).second) Told.Raise(text);
}

std::string StreamWatch::Place() {
  return "Called at " + Visible(host_) + " (" + SettingInForce(machine_, given_here_, "Webaddress", host_) +
         "), port " + Visible(port_) + " (" + SettingInForce(machine_, given_here_, "SocketPort", port_) +
         ").";
}

// The beginning of what comes to a request that QuoteTracker would answer; empty when it is no reply.
std::string StreamWatch::ReplyOverHttp() {
  auto& internet = machine_.internet();
  const WinInetApi::Handle handle = internet.InternetOpenA(std::nullopt, WinInetApi::kOpenTypePreconfig);
  for (const auto option :
       {WinInetApi::kOptionConnectTimeout, WinInetApi::kOptionSendTimeout, WinInetApi::kOptionReceiveTimeout})
    internet.InternetSetOptionA(handle, option, kPatienceOverHttp);
  const auto connection = internet.InternetConnectA(handle, TextToAnsi(host_),
                                                    static_cast<std::uint16_t>(RoundToInt32(Val(port_))), "",
                                                    "", WinInetApi::kServiceHttp);
  const auto request = internet.HttpOpenRequestA(connection, "GET", "/req?EnumPorts()", "HTTP/1.0", "",
                                                 WinInetApi::kFlagReload);
  std::string reply;
  if (internet.HttpSendRequestA(request, "", "")) {
    std::array<char, kMostShownOfGreeting> piece;
    std::uint32_t read = 0;
    if (internet.InternetReadFile(request, piece.data(), piece.size(), read))
      reply.assign(piece.data(), read);
    if (reply.empty() && internet.HttpQueryInfoA(request, WinInetApi::kQueryContentType, 1024))
      reply = kHttpBegins;
  }
  internet.InternetCloseHandle(handle);
  return reply;
}

}  // namespace mirelo::app
