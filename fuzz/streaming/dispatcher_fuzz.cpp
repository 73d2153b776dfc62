// Chunks of any kind from anywhere, in all three states of the conversation, also nested in the handler of an
// event: the stream survives them, raises run-time errors only, and keeps its promises to the client.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <string>

#include "automation/runtime_error.h"
#include "chunks.h"
#include "core/status_run_query.h"
#include "support/idle_loop.h"
#include "support/stream_rig.h"

namespace {

using namespace mirelo;

void Require(bool holds) {
  if (!holds) std::abort();
}

class Session {
 public:
  Session(std::uint8_t options, std::deque<std::string> chunks) : rig_(loop_), chunks_(std::move(chunks)) {
    using Credential = testing::MemoryVault::Credential;
    rig_.vault.credentials = {{Credential::ApplicationName, "name"},
                              {Credential::ApplicationSecret, "secret"}};
    rig_.facade->StatusRunWorkQT(static_cast<StatusRunQueryQT>(options & 3));
    nests_ = (options & 4) != 0;
    rig_.stream->StopEndlessWalks(true);
    rig_.stream->st_StreamerFile("A.SDF");
    rig_.stream->DovantaFormatUserDate((options & 8) != 0 ? "dd.mm.yyyy hh:mm" : "");
    rig_.stream->arrTickers(VariantArray::OfTexts({"A", "B", "C", "D", "E", "F"}));
    rig_.stream->QTDatas.Subscribe([this] { OnQuotes(); });
    mGlobal::SetStreamingObject(rig_.stream);
    rig_.stream->connect();
  }

  void Run() {
    while (!chunks_.empty()) {
      DeliverNext();
      Attempt([] { mGlobal::StreamTimerProc(); });
    }
    for (const std::string& message : rig_.Sent()) Require(message.ends_with('\xFF'));
    Require(rig_.registry.OpenKeys() == 0);
  }

 private:
  template <class Action>
  static void Attempt(Action&& action) {
    try {
      action();
    } catch (const RuntimeError& error) {
      Require(!error.Description().empty());
    }
  }
  void DeliverNext() {
    const std::string chunk = std::move(chunks_.front());
    chunks_.pop_front();
    Attempt([&] { rig_.DeliverOutOfTurn(chunk); });
  }
  void OnQuotes() {
    Require(!raising_);
    raising_ = true;
    if (nests_ && !chunks_.empty()) DeliverNext();
    for (const auto& quote : rig_.Take()) {
      Require(quote->NameID() == "a" + std::to_string(taken_++));
      Require(quote->Tick().empty() && quote->UPC().empty());
    }
    raising_ = false;
  }

  testing::IdleLoop loop_;
  testing::StreamRig rig_;
  std::deque<std::string> chunks_;
  bool nests_ = false;
  bool raising_ = false;
  int taken_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto chunks = fuzzing::Chunks(data + 1, size - 1);
  Session(data[0], {chunks.begin(), chunks.end()}).Run();
  return 0;
}
