#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quotetracker/market.h"
#include "quotetracker/stream_conversation.h"
#include "quotetracker/stream_messages.h"

using namespace mirelo::quotetracker;

namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

// Records whose lengths fill their bytes exactly.
void RequireRecords(std::string_view bytes) {
  while (!bytes.empty()) {
    Require(bytes.size() >= 4);
    const auto length = static_cast<std::size_t>(static_cast<unsigned char>(bytes[2])) +
                        256 * static_cast<std::size_t>(static_cast<unsigned char>(bytes[3]));
    Require(length >= 4 && length <= bytes.size());
    bytes.remove_prefix(length);
  }
}

std::string LoginWithGoodDigest(const std::string& greeting) {
  const auto begin = greeting.find("<SERVERTIME>") + 12;
  const std::string time = greeting.substr(begin, greeting.find("</SERVERTIME>") - begin);
  return "<LOGIN><AppName>MireloDemo</AppName><AppID>MireloDemo</AppID><AppVer></AppVer><AppAuth>" +
         LoginDigest("demo-secret", time) + "</AppAuth></LOGIN>";
}

}  // namespace

// What a client says on the stream, in pieces as the first byte tells, by a client that is logged in or not.
// Every reply is of a known kind, and whatever is subscribed to gives good records.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t piece = 1 + data[0] / 2;
  const bool logged_in = data[0] % 2 == 1;
  std::string_view said(reinterpret_cast<const char*>(data + 1), size - 1);

  static Market market(
      1, [] { return Moment{}; }, 1000);
  StreamConversation conversation(market, {}, "1", {"L1", "HO"}, 1);
  const std::string greeting = conversation.Greet().bytes;
  if (logged_in)
    Require(conversation.Answer(LoginWithGoodDigest(greeting))->bytes.find(">0<") != std::string::npos);

  MessageSplitter splitter;
  while (!said.empty()) {
    Require(splitter.Add(said.substr(0, piece)));
    said.remove_prefix(std::min(piece, said.size()));
    while (const auto message = splitter.Next()) {
      if (const auto answer = conversation.Answer(*message)) {
        const std::string kind = answer->bytes.substr(0, 2);
        Require(kind == "OK" || kind == "LO" || kind == "ES");
      }
    }
    while (conversation.Feed().OwesSnapshots()) RequireRecords(conversation.Feed().NextSnapshots());
    std::size_t count = 0;
    RequireRecords(conversation.Feed().NextUpdates(20, count));
  }
  return 0;
}
