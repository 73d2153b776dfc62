#include "streaming/conversation.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <utility>

#include "automation/variant.h"
#include "quotetracker/login.h"
#include "quotetracker/stream_fault.h"

namespace mirelo::testing {

using std::chrono::steady_clock;
using ::testing::IsEmpty;

const std::vector<ConversationStep> kSteps = {
    {"greeting", Status_ENUMSOURCES_L1, 0, 1, false, {}},
    {"greeting", Status_LEVEL_I_FULL_QUOTE, 0, 1, false, {}},
    {"login", Status_ENUMSOURCES_L1, 1, 2, false, {}},
    {"login", Status_LEVEL_I_FULL_QUOTE, 1, 2, false, {}},
    {"sources", Status_ENUMSOURCES_L1, 2, 4, true, {}},
    {"streamer", Status_LEVEL_I_FULL_QUOTE, 2, 3, false, {}},
    {"quotes", Status_LEVEL_I_FULL_QUOTE, 3, 4, false, {5}},
};

void PrintTo(const ConversationStep& step, std::ostream* out) {
  *out << step.name << " in state " << step.purpose;
}

std::string NameOf(const ConversationStep& step) { return step.name + std::to_string(step.purpose); }

quotetracker::ServerOptions WithFault(const std::string& fault) {
  quotetracker::ServerOptions options;
  options.stream.faults.push_back(quotetracker::StreamFaultPlan::Parse(fault, 1));
  return options;
}

Conversation::Conversation(quotetracker::ServerOptions options)
    : StreamRig(loop), server(std::move(options)) {
  const quotetracker::Credentials known;
  vault.credentials = {{MemoryVault::Credential::ApplicationName, known.app_name},
                       {MemoryVault::Credential::ApplicationSecret, known.app_secret}};
  host.Use(library_);
  observed.behind_ready = [this](unsigned ready) {
    if ((ready & host::MessageLoop::kRead) != 0) ++reads;
  };
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

void Conversation::ExpectWhatCameBefore(const ConversationStep& step) {
  EXPECT_EQ(server.StreamMessages().size(), step.messages);
  std::vector<std::string> texts{"Connection started...", "Connecting to host..."};
  if (step.connected) texts.push_back("Connected");
  EXPECT_EQ(status_texts, texts);
  EXPECT_EQ(processes, step.processes);
  EXPECT_THAT(symbols, IsEmpty());
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_TRUE(stream->StartStop());
}

void Conversation::Take() {
  for (const auto& quote : StreamRig::Take()) {
    keys.push_back(quote->NameID());
    if (std::ranges::find(symbols, quote->Symbol()) == symbols.end()) symbols.push_back(quote->Symbol());
  }
}

}  // namespace mirelo::testing
