#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/winsock_library.h"
#include "support/level1_wire.h"
#include "wire/message_aligner.h"

namespace mirelo::testing {

// Messages of a stream, and what an aligner makes of bytes.

using Chunks = std::vector<std::string>;
using wire::MessageAligner;

inline constexpr const char* kGreeting =
    "OK<CONNECT><SERVERTIME>12/31/2005 09:30:15</SERVERTIME><SERVERVERSION>4</SERVERVERSION></CONNECT>";
inline constexpr const char* kLoggedIn =
    "LO<STATUSCODE>0</STATUSCODE><STATUSDESC>Login accepted</STATUSDESC>";
inline constexpr const char* kAcceptedLogin = "OK<STREAMER>SWISS.SDF</STREAMER>";
inline constexpr const char* kSources =
    "ES<SOURCES><SOURCETYPE>L1</SOURCETYPE><SOURCE><FILENAME>A.SDF</FILENAME><NAME>LOOK: S1, "
    "HO</NAME></SOURCE>"
    "</SOURCES>";
inline constexpr const char* kAskSources = "<ENUMSOURCES><SourceType>L1</SourceType></ENUMSOURCES>\xFF";

// The most that a socket hands over at once.
inline constexpr std::size_t kChunkLimit = host::SocketConnection::kChunkLimit;

// A record of that many bytes in all, at least 14.
inline std::string Record(const std::string& kind, std::size_t length) {
  return Level1Wire(kind).Symbol("MSFT").Text(18, std::string(length - 14, 'x'));
}

inline Chunks Feed(MessageAligner& aligner, std::string_view bytes) {
  aligner.Add({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  Chunks chunks;
  while (const auto chunk = aligner.Next()) chunks.emplace_back(chunk->begin(), chunk->end());
  return chunks;
}

inline Chunks FeedAll(std::string_view bytes) {
  MessageAligner aligner;
  return Feed(aligner, bytes);
}

inline Chunks LetGo(MessageAligner& aligner) {
  aligner.LetGo();
  Chunks chunks;
  while (const auto chunk = aligner.Next()) chunks.emplace_back(chunk->begin(), chunk->end());
  return chunks;
}

// The record, with a length that is more than the true one by so many bytes.
inline std::string WithLength(Level1Wire record, std::size_t more) {
  return record.Length(static_cast<std::int16_t>(record.Bytes().size() + more));
}

}  // namespace mirelo::testing
