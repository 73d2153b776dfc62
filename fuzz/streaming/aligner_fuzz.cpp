// A stream from anywhere, cut in any way: the messages that it is cut into anew are the same, and so is what
// the stream class makes of them. Little waits, whatever comes.
//
// An input's first byte says what the client asked for (1: sources), the second how the bytes are cut.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "automation/runtime_error.h"
#include "core/status_run_query.h"
#include "streaming/reference_stream.h"
#include "support/idle_loop.h"
#include "support/stream_rig.h"
#include "wire/message_aligner.h"
#include "wire/whole_messages.h"

namespace {

using namespace mirelo;
using testing::WholeMessages;
using wire::MessageAligner;

constexpr std::size_t kLongestRecord = 32767;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

void RequireLittleWaits(WholeMessages& messages, bool asked) {
  const std::size_t most = std::max(kLongestRecord, MessageAligner::kLongestReply);
  Require(asked || messages.Aligner().Waiting() <= most, "much waits");
}

// The pieces that `next_size` gives the sizes of, and then nothing more.
template <class NextSize>
WholeMessages Cut(std::string_view stream, bool asked, NextSize&& next_size) {
  WholeMessages messages(asked);
  while (!stream.empty()) {
    const std::size_t size = std::min(stream.size(), std::max<std::size_t>(1, next_size()));
    messages.Add(stream.substr(0, size));
    RequireLittleWaits(messages, asked);
    stream.remove_prefix(size);
  }
  messages.LetGo();
  return messages;
}

struct Heard {
  std::vector<testing::FlatQuote> quotes;
  std::vector<std::string> sent;
  std::vector<std::string> events;
  friend bool operator==(const Heard&, const Heard&) = default;
};

// What the stream class makes of the chunks.
Heard HeardOf(const std::vector<std::string>& chunks, bool asked) {
  using Credential = testing::MemoryVault::Credential;
  testing::IdleLoop loop;
  testing::StreamRig rig(loop);
  rig.vault.credentials = {{Credential::ApplicationName, "name"}, {Credential::ApplicationSecret, "secret"}};
  rig.facade->StatusRunWorkQT(asked ? Status_ENUMSOURCES_L1 : Status_LEVEL_I_FULL_QUOTE);
  rig.stream->arrTickers(VariantArray::OfTexts({"A"}));
  rig.stream->st_StreamerFile("A.SDF");
  rig.stream->StopEndlessWalks(true);
  Heard heard;
  rig.stream->OnStatusText.Subscribe([&](const std::string& text) { heard.events.push_back(text); });
  rig.stream->connect();
  for (const std::string& chunk : chunks) {
    try {
      rig.Deliver(chunk);
    } catch (const RuntimeError& error) {
      Require(error.Number() != cQTStreaming::kEndlessWalk, "a walk goes round for ever");
      heard.events.push_back(error.Description());
    }
  }
  for (const auto& quote : rig.Take()) heard.quotes.push_back(testing::Flat(*quote));
  heard.sent = rig.Sent();
  return heard;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const bool asked = (data[0] & 1) != 0;
  const std::string_view stream(reinterpret_cast<const char*>(data) + 2, size - 2);

  WholeMessages whole = Cut(stream, asked, [&] { return stream.size(); });
  for (const std::string& message : whole.Messages())
    Require(asked || !message.starts_with("ES"), "a list that nobody asked for has passed");

  WholeMessages bytes = Cut(stream, asked, [] { return 1; });
  Require(bytes.Messages() == whole.Messages(), "single bytes give other messages");

  std::minstd_rand random(data[1] + 1U);
  const std::size_t longest = std::size_t{2} << random() % 8;
  WholeMessages pieces = Cut(stream, asked, [&] { return random() % longest; });
  Require(pieces.Messages() == whole.Messages(), "pieces give other messages");

  const Heard heard = HeardOf(whole.Chunks(), asked);
  Require(HeardOf(bytes.Chunks(), asked) == heard, "the class hears other things of single bytes");
  Require(HeardOf(pieces.Chunks(), asked) == heard, "the class hears other things of pieces");
  return 0;
}
