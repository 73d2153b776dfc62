#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "automation/event.h"
#include "automation/runtime_error.h"
#include "automation/variant.h"
#include "core/cQTDatas.h"

namespace mirelo {

class cMirelo;

// One socket connection to QuoteTracker's streaming port: it logs in, then fetches the list of quote sources
// or subscribes tickers and delivers their quotes, as Owner.StatusRunWorkQT says.
//
// To stream quotes: set Owner, arrTickers, st_StreamerFile, DovantaFormatUserDate and StartStop, put
// Status_LEVEL_I_FULL_QUOTE into the owner's StatusRunWorkQT, and call connect. At each QTDatas take the
// quotes with GetQTData and give them back with FreeQTDataBuffer.
//
// Everything runs on the thread of the installed host's message loop. QTDatas is followed by a yield to that
// loop, so more records may be decoded while a handler runs; they wait in the buffer without a second event.
// Make the object with std::make_shared: then a handler may let go of the last reference.
//
// What the peer sends can fail, and such errors leave through the message loop to whoever runs it; the rest
// of the chunk is lost, and the stream goes on with the next one. They are 5 for a source list without closed
// source type and for a clock displaced out of the calendar, 6 for a record that begins behind position
// 32767, 9 for a text without end, 13 for tickers that are no array, 91 for a login result without an owner,
// the vault's when the login needs credentials, kEndlessWalk, and those of handlers other than QTDatas's.
class cQTStreaming : public Object, public std::enable_shared_from_this<cQTStreaming> {
 public:
  // The displacement of times is read from the settings: error 91 while no facade lives, 13 for one that is
  // no number.
  cQTStreaming();
  // Closes an open connection. Raises nothing.
  ~cQTStreaming() override;
  cQTStreaming(const cQTStreaming&) = delete;
  cQTStreaming& operator=(const cQTStreaming&) = delete;

  std::string_view TypeName() const override { return "cQTStreaming"; }

  // Moves the waiting quotes to copy_cQTDatas and returns it; nothing while StartStop is false. Quotes of
  // earlier takes stay there until FreeQTDataBuffer. Raises nothing: a failure ends the move where it stands.
  std::shared_ptr<cQTDatas> GetQTData();

  // What FreeQTDataBuffer clears; the same object as copy_cQTDatas until another is set.
  const std::shared_ptr<cQTDatas>& QTConteiner() const { return QTConteiner_; }
  void QTConteiner(std::shared_ptr<cQTDatas> value) { QTConteiner_ = std::move(value); }

  // The tickers to subscribe: an array of texts, sent as they are.
  const Variant& arrTickers() const { return arrTickers_; }
  void arrTickers(Variant value) { arrTickers_ = std::move(value); }

  // The facade. It must outlive this object or be unset first; in the second form this object keeps it alive.
  void Owner(cMirelo* owner) { Owner_ = std::shared_ptr<cMirelo>(std::shared_ptr<cMirelo>(), owner); }
  void Owner(std::shared_ptr<cMirelo> owner) { Owner_ = std::move(owner); }

  // The streamer file to ask for (GiveStreamerFile); an empty one stops the conversation after the login.
  const std::string& st_StreamerFile() const { return st_StreamerFile_; }
  void st_StreamerFile(std::string value) { st_StreamerFile_ = std::move(value); }

  // Stored for clients; nothing here uses it.
  bool Enumerate_Sources_Result_ID() const { return Enumerate_Sources_Result_ID_; }
  void Enumerate_Sources_Result_ID(bool value) { Enumerate_Sources_Result_ID_ = value; }

  // The format of the quotes' dates, in the letters of Format().
  const std::string& DovantaFormatUserDate() const { return DovantaFormatUserDate_; }
  void DovantaFormatUserDate(std::string value);

  // Whether GetQTData delivers. Set by the client; DisConnect clears it.
  bool StartStop() const { return StartStop_; }
  void StartStop(bool value) { StartStop_ = value; }

  // Where taken quotes go.
  const std::shared_ptr<cQTDatas>& copy_cQTDatas() const { return copy_cQTDatas_; }
  void copy_cQTDatas(std::shared_ptr<cQTDatas> value) { copy_cQTDatas_ = std::move(value); }

  // Starts a connection to the settings' Webaddress and SocketPort (127.0.0.1:16240) and returns at once.
  // Success shows only through events; the result is always false. A failure is shown in a message box and as
  // a status text, and what was made until then stays. Settings that cannot be read raise their errors: 13 or
  // 6 for a port that is no number of 32 bits, 0x80044284 for a damaged value. An earlier connection is let
  // go as soon as the new one is made, without a Disconnect; its library closes it then.
  bool connect();

  // Stops the delivery and closes the connection. The result is empty. A failure becomes a status text.
  Variant DisConnect();

  // Sends a message that carries its terminator. Nothing happens without text, connection, or once the
  // connection was lost. A failure is shown in a message box.
  void SendWinsock(const std::string& as_cmd);

  // Called by the 100 ms timer that a login for the source list starts: reports the login's result, and asks
  // for the list. Error 91 without an owner, when the login succeeded.
  void RaiseEventTimerProc();

  // The file name of a quote source, by its display text without regard to case and surrounding blanks; empty
  // when there is none. Failures are reported by the error handler.
  std::string GiveStreamerFile(std::string_view Site = {});

  // Ends all subscriptions. No reply is awaited.
  void stop_sub();

  // Clears QTConteiner. Raises nothing.
  void FreeQTDataBuffer();

  // As GetQTData.
  std::shared_ptr<cQTDatas> GetCurrentData();

  // Whether decoding that would never end is broken off. Of a record whose kind is not wanted only the length
  // is read, to find the next record; a length of zero or below can lead back to the same place for ever.
  // With false, the default and the rule of this class, it goes round there for ever. With true it raises
  // kEndlessWalk instead, and the unfinished record kept from earlier chunks is dropped. Chunks whose
  // decoding ends by itself are decoded alike in both cases.
  void StopEndlessWalks(bool value) { StopEndlessWalks_ = value; }
  // "The quote stream lost its place", source "Mirelo.cQTStreaming.DecodeRecords".
  static constexpr std::int32_t kEndlessWalk = ErrorNumber(0x80040065);

  // Whether a value of 0 or below that a record carries can be a change of its ticker, as it then always is
  // in the ticker's first record. With false, the default and the rule of this class, none is, so that a
  // record whose only news is a size of 0 is no quote.
  void CountZeros(bool value) { CountZeros_ = value; }

  // A status line for a person.
  Event<const std::string&> OnStatusText;
  // What the owner should do next: 1 when the source list has been stored, 5 when the streamer was accepted
  // and the subscription sent.
  Event<std::int16_t> PerformanceFollowingProcess;
  // Quotes wait to be taken. Not raised while it is being raised by this stream or any other; a handler's
  // failure is dropped.
  Event<> QTDatas;
  // A record of this symbol, in the bytes of the wire, changed nothing that counts, so it is no quote. For
  // whoever asks why a quote did not come; a handler must raise nothing and leave the stream alone.
  Event<std::string_view> Unchanged;
  // Decoding a chunk breaks off with an error, which the handler finds as the one that is being handled: what
  // is lost with it, from the record that could not be followed to the chunk's end. For whoever asks why a
  // quote did not come, as Unchanged.
  Event<std::span<const std::uint8_t>> Lost;

 private:
  class BytesTransferSink;
  class ConnectionSink;
  struct Internals;

  bool StartStop_ = false;
  bool StopEndlessWalks_ = false;
  bool CountZeros_ = false;
  bool Enumerate_Sources_Result_ID_ = false;
  std::string DovantaFormatUserDate_;
  std::string st_StreamerFile_;
  std::shared_ptr<cMirelo> Owner_;
  Variant arrTickers_;
  std::shared_ptr<cQTDatas> copy_cQTDatas_ = std::make_shared<cQTDatas>();
  std::shared_ptr<cQTDatas> QTConteiner_ = copy_cQTDatas_;

  // The conversation and what it works with; it goes first.
  std::unique_ptr<Internals> internals_;
};

}  // namespace mirelo
