#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/cQTDatas.h"
#include "core/cTickerDateTimes.h"
#include "host/message_loop.h"
#include "host/winsock_library.h"
#include "streaming/MD5.h"
#include "streaming/arrival_clock.h"
#include "streaming/cQTStreaming.h"
#include "streaming/level1_record.h"
#include "streaming/quote_keys.h"
#include "streaming/stamp_texts.h"
#include "streaming/symbol_index.h"

namespace mirelo {

// The conversation of a stream, and what it works with: what the stream's clients need not see, nor be
// compiled with. Chunks come in here, and all that is done for each of their records is done here.
struct cQTStreaming::Internals {
  using Bytes = std::span<const std::uint8_t>;

  // Errors as the stream's constructor.
  explicit Internals(cQTStreaming& owner);
  // Closes an open connection. Raises nothing.
  ~Internals();
  Internals(const Internals&) = delete;
  Internals& operator=(const Internals&) = delete;

  // connection.cpp
  void OpenConnection(const std::string& host_and_port);
  void m_oConnectionEvents_OnDisconnected();

  // dispatcher.cpp
  void m_oBytesTransferEvents_OnBytesReceived(Bytes chunk);
  bool GatherSources(std::string_view chunk);
  void TakeSources(std::string_view chunk);
  void TakeAcceptance(std::string_view chunk);
  void TakeLoginResult(std::string_view chunk);
  void DecodeBehindTail(Bytes chunk);
  void DecodeContinuation(Bytes chunk);

  // login.cpp
  std::string BuildLoginMessage(std::string_view reply) const;
  std::string GetAppAuth(const std::string& text) const;

  // control_messages.cpp
  void SendEnumSources(const std::string& source_type);
  void SendL1Site(const std::string& streamer_file);
  void SendSubscribe();
  void ParseSources(std::string_view text);
  bool ParseSourceItems(const std::string& type, std::string_view text);
  void StoreSourceItem(const std::string& type, std::string_view item);

  // decoder.cpp
  void DecodeRecords(Bytes data);
  void WalkRecords(Bytes data, std::int32_t& record_begin);
  [[noreturn]] void LosePlace();
  void ApplyQuote(const Level1Record& record);
  cTickerDateTime& StateOf(std::string_view symbol, bool& is_first);

  // delivery.cpp
  void AddQuoteToBuffer(const Level1Record& record, const std::string& date_time, std::int32_t last_volume,
                        std::int64_t whole_last_volume);
  void RaiseQTDatas();

  cQTStreaming& stream;

  std::shared_ptr<BytesTransferSink> m_oBytesTransferEvents;
  std::shared_ptr<ConnectionSink> m_oConnectionEvents;
  std::shared_ptr<host::SocketConnection> ConnectionObject;
  std::int32_t BytesTransferCookie = 0;
  std::int32_t ConnectionEventsCookie = 0;
  host::MessageLoop::Token TimerID = 0;

  std::string LoginMessage;  // the last one sent; cleared by connect
  std::string StatusCode;    // of the last login reply
  std::string StatusDesc;
  bool SourcesPending = false;             // a source list reply is spread over several chunks
  std::string SourcesText;                 // its chunks so far, as bytes
  std::vector<std::uint8_t> PendingBytes;  // the tail of an unfinished quote record, or nothing
  bool StreamerAccepted = false;           // set when the streamer reply has come; nothing reads it

  cQTDatas QuoteBuffer;           // quotes that nobody has taken yet
  cTickerDateTimes TickerStates;  // the last known state per symbol
  SymbolIndex symbol_index;       // into TickerStates
  QuoteKeys QuoteCounter;
  StampTexts stamps;
  ArrivalClock arrival;
  MD5 Hasher;
};

}  // namespace mirelo
