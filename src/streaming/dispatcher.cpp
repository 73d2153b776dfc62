// A chunk is what the socket delivered at once. Its first two bytes say what it is, as if the peer's messages
// came one a chunk; only source lists and quote records are gathered over several.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "core/cMirelo.h"
#include "core/mGlobal.h"
#include "core/status_run_query.h"
#include "host/host.h"
#include "streaming/stream_internals.h"
#include "streaming/tags.h"

namespace mirelo {

namespace {

constexpr std::int16_t kStreamerAccepted = 5;

constexpr std::uint16_t MessageKind(std::uint8_t first, std::uint8_t second) {
  return static_cast<std::uint16_t>(first << 8 | second);
}

// The bytes of a chunk as the tag routines search them.
std::string_view Message(std::span<const std::uint8_t> chunk) {
  return {reinterpret_cast<const char*>(chunk.data()), chunk.size()};
}

bool EndsSources(std::string_view chunk) { return FindTag(chunk, "</SOURCES>") != 0; }

host::MessageLoop::Token StartLoginTimer() {
  try {
    return host::Host::Current().loop().StartTimer(host::MessageLoop::Milliseconds(100),
                                                   mGlobal::StreamTimerProc);
  } catch (...) {
    return 0;  // goes unnoticed: the source list is then never asked for
  }
}

}  // namespace

void cQTStreaming::Internals::m_oBytesTransferEvents_OnBytesReceived(Bytes chunk) {
  if (chunk.data() == nullptr) return;
  if (SourcesPending && !GatherSources(Message(chunk))) return;
  if (chunk.size() < 3) return;  // dropped, also behind a pending tail

  switch (MessageKind(chunk[0], chunk[1])) {
    case MessageKind('O', 'K'):
      return TakeAcceptance(Message(chunk));
    case MessageKind('L', 'O'):
      return TakeLoginResult(Message(chunk));
    case MessageKind('E', 'S'):
      return TakeSources(Message(chunk));
    case MessageKind('L', '1'):
      return DecodeBehindTail(chunk);
    case MessageKind('S', '1'):
    case MessageKind('H', 'O'):
    case MessageKind('H', 'T'):
      return DecodeRecords(chunk);
    default:
      return DecodeContinuation(chunk);
  }
}

// While a source list is pending every chunk belongs to it, quote records too. False until the list's end has
// come; the chunk that holds the end is then dispatched like any other.
bool cQTStreaming::Internals::GatherSources(std::string_view chunk) {
  SourcesText += chunk;
  if (!EndsSources(chunk)) return false;
  SourcesPending = false;
  ParseSources(std::exchange(SourcesText, {}));
  return true;
}

void cQTStreaming::Internals::TakeSources(std::string_view chunk) {
  if (EndsSources(chunk)) return ParseSources(chunk);
  SourcesText = chunk;
  SourcesPending = true;
}

void cQTStreaming::Internals::TakeAcceptance(std::string_view chunk) {
  if (!GetTagValue(chunk, "<CONNECT>").empty()) {
    LoginMessage = BuildLoginMessage(chunk);
    return stream.SendWinsock(LoginMessage);
  }
  if (!GetTagValue(chunk, "<STREAMER>").empty()) {
    StreamerAccepted = true;
    SendSubscribe();
    stream.PerformanceFollowingProcess.Raise(kStreamerAccepted);
  }
}

void cQTStreaming::Internals::TakeLoginResult(std::string_view chunk) {
  StatusCode = GetTagValue(chunk, "<STATUSCODE>");
  StatusDesc = Replace(GetTagValue(chunk, "<STATUSDESC>"), "\r\n", "");
  if (stream.Owner_ == nullptr) throw Errors::ObjectNotSet();
  switch (stream.Owner_->StatusRunWorkQT()) {
    case Status_ENUMSOURCES_L1:
      // The next request isn't sent from inside the socket's own event.
      TimerID = StartLoginTimer();
      break;
    case Status_LEVEL_I_FULL_QUOTE:
      if (StatusCode == "0") SendL1Site(stream.st_StreamerFile_);
      break;
    case Status_Null:
      break;
  }
}

// A chunk of L1 records behind a pending tail: all of its bytes are laid on the one place behind the tail, so
// that only its last byte remains, and zeros follow. The server's streams are read so; it is no slip to be
// mended.
void cQTStreaming::Internals::DecodeBehindTail(Bytes chunk) {
  if (PendingBytes.empty()) return DecodeRecords(chunk);
  std::vector<std::uint8_t> merged(PendingBytes.size() + chunk.size() - 1);
  std::ranges::copy(PendingBytes, merged.begin());
  merged[PendingBytes.size()] = chunk.back();
  DecodeRecords(merged);
  PendingBytes.clear();
}

// A chunk of no known kind continues the pending record, or means nothing.
void cQTStreaming::Internals::DecodeContinuation(Bytes chunk) {
  if (PendingBytes.empty()) return;
  std::vector<std::uint8_t> merged;
  merged.reserve(PendingBytes.size() + chunk.size());
  merged.insert(merged.end(), PendingBytes.begin(), PendingBytes.end());
  merged.insert(merged.end(), chunk.begin(), chunk.end());
  DecodeRecords(merged);  // which keeps a new tail, or forgets the old one
}

}  // namespace mirelo
