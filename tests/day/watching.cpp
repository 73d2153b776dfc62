#include "day/watching.h"

#include <gmock/gmock.h>

#include <utility>

#include "automation/text.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"

namespace mirelo::testing {

using ::testing::IsEmpty;

Watching::Watching() {
  host.Use(loop).Use(clock).Use(registry).Use(desktop).Use(system).Use(vault);
  vault.credentials = {{MemoryVault::Credential::ApplicationName, "MireloDemo"},
                       {MemoryVault::Credential::ApplicationSecret, "demo-secret"}};
  side.emplace(host, wire::SideHost::Parts{.sockets =
                                               [this](host::MessageLoop&) {
                                                 auto made = std::make_unique<MemoryWinsock>();
                                                 sockets = made.get();
                                                 return made;
                                               },
                                           .internet =
                                               [this](host::MessageLoop&) {
                                                 auto made = std::make_unique<AnsweringInternet>();
                                                 internet = made.get();
                                                 return made;
                                               }});
  watch.emplace(
      *side, [this] { return day::QuoteWatch::Clock::time_point(loop.Elapsed()); },
      [this] { return worked_; });
  internet->answer = [this](const AnsweringInternet::Request& request) { return Reply(request.resource); };
}

Watching::~Watching() { EXPECT_THAT(desktop.boxes, IsEmpty()); }

void Watching::Save(const char* key, const char* text) {
  mGlobal::AppSettings().SaveSetting("Settings", key, Variant(text));
}

void Watching::Streamed() {
  Save("Seconds", "0");
  mGlobal::AppSettings().SaveSetting("Settings\\QuoteSource\\First", "ComQuoteSource", Variant("Swiss"));
  mGlobal::AppSettings().SaveSetting("Settings\\QuoteSource\\List", "Swiss", Variant("SWISS.SDF"));
}

Watching::Watched Watching::Ask(const std::string& ticker, const std::optional<std::string>& column,
                                About about) {
  return watch->Ask({about, ticker, column},
                    [this, name = ticker + " " + column.value_or("")] { told.push_back(name); });
}

std::string Watching::Status(const std::string& ticker, const std::optional<std::string>& column) {
  return Ask(ticker, column, About::Status)->Answer().ToText();
}

void Watching::Converse() {
  Deliver("OK<CONNECT>QuoteTracker</CONNECT><SERVERTIME>09:30</SERVERTIME>");
  Deliver("LO<STATUSCODE>0</STATUSCODE>");
  Deliver("OK<STREAMER>SWISS.SDF</STREAMER>");
}

void Watching::Quote(const char* ticker, double price) {
  Deliver(Level1Wire().Symbol(ticker).Last(price).Bytes());
  Pass(day::QuoteWatch::kTellPause);
}

void Watching::BeginStreaming() {
  Pass(day::QuoteWatch::kGather);
  Converse();
  told.clear();
}

std::vector<std::string> Watching::Subscriptions() const {
  constexpr std::string_view kBegin = "<ReqType>SUB</ReqType><Symbols>";
  std::vector<std::string> symbols;
  for (const auto& connection : sockets->connections) {
    for (const std::string& sent : connection->sent) {
      const auto begin = sent.find(kBegin);
      if (begin == std::string::npos) continue;
      const auto end = sent.rfind("</Symbols>");
      symbols.push_back(Replace(sent.substr(begin + kBegin.size(), end - begin - kBegin.size()),
                                "</Symbols><Symbols>", ","));
    }
  }
  return symbols;
}

std::optional<std::string> Watching::Reply(const std::string& resource) {
  if (!answers) return std::nullopt;
  const auto begin = resource.find('(') + 1;
  std::string reply = "OK";
  for (const std::string& ticker : Split(resource.substr(begin, resource.size() - begin - 1), ",")) {
    reply += "\r\n" + ticker + "," +
             (ticker == "NONE" ? "" : "01/20/2011,09:30:00," + last + ",28,29,-1,U,100,3,2,1,1,5,9,9,1,1,1");
  }
  return reply;
}

}  // namespace mirelo::testing
