#include "streaming/conversation.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "automation/variant.h"
#include "quotetracker/login.h"

namespace mirelo::testing {

using std::chrono::steady_clock;

Conversation::Conversation(quotetracker::ServerOptions options)
    : StreamRig(loop), server(std::move(options)) {
  const quotetracker::Credentials known;
  vault.credentials = {{host::CredentialVault::Credential::ApplicationName, known.app_name},
                       {host::CredentialVault::Credential::ApplicationSecret, known.app_secret}};
  host.Use(library_);
  Setting("SocketPort", static_cast<std::int32_t>(server.StreamPort()));
  mGlobal::SetStreamingObject(stream);
  stream->arrTickers(VariantArray::OfTexts({"MSFT", "IBM"}));
  stream->st_StreamerFile("SWISS.SDF");
  stream->OnStatusText.Subscribe([this](const std::string& text) { status_texts.push_back(text); });
  stream->PerformanceFollowingProcess.Subscribe(
      [this](std::int16_t process) { processes.push_back(process); });
  stream->QTDatas.Subscribe([this] { Take(); });
}

void Conversation::Begin(StatusRunQueryQT purpose) {
  facade->StatusRunWorkQT(purpose);
  stream->connect();
}

void Conversation::Await(const std::function<bool()>& done) {
  const auto end = steady_clock::now() + std::chrono::seconds(10);
  while (!done()) {
    ASSERT_LT(steady_clock::now(), end) << "still waiting";
    // The server's thread wakes no loop, so it is asked from time to time.
    const int before = ticks_;
    loop.StartTimer(host::MessageLoop::Milliseconds(2), [this] { ++ticks_; });
    loop.RunUntil([&] { return ticks_ != before; });
  }
}

void Conversation::AwaitMessages(std::size_t count) {
  Await([&] { return server.StreamMessages().size() >= count; });
}

void Conversation::AwaitEnd() {
  Await([&] { return loop.WatchCount() == 0; });
}

std::vector<std::string> Conversation::Said() const {
  std::vector<std::string> messages = server.StreamMessages();
  for (std::string& message : messages) {
    const auto digest = message.find("<AppAuth>");
    if (digest != std::string::npos) message.replace(digest + 9, 32, "...");
  }
  return messages;
}

void Conversation::Take() {
  for (const auto& quote : StreamRig::Take()) {
    if (std::ranges::find(symbols, quote->Symbol()) == symbols.end()) symbols.push_back(quote->Symbol());
  }
}

}  // namespace mirelo::testing
