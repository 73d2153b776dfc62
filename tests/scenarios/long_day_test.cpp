// A long day in small, of everything that goes wrong: QuoteTracker is killed and comes back, the disk is full
// and freed, bytes are garbage, quotes come in bursts, and somebody hostile answers in QuoteTracker's place.
// The day must go on, leave nothing behind in the machine, and show nothing that was not sent.

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "automation/variant.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "scenarios/long_day.h"
#include "support/level1_wire.h"
#include "support/sanitized.h"

namespace mirelo::testing {
namespace {

using namespace std::chrono_literals;
using Peer = LoopbackServer::Peer;

std::string Noise(std::size_t count, unsigned seed) {
  std::mt19937 chance(seed);
  std::string bytes;
  while (bytes.size() < count) bytes += static_cast<char>(chance());
  return bytes;
}

// One of the things that go wrong on the stream, done behind an orderly conversation.
struct Mischief {
  const char* name;
  std::function<void(Peer& peer, SentQuotes& msft, SentQuotes& ibm)> act;
};

std::string Both(SentQuotes& msft, SentQuotes& ibm, int count) {
  std::string bytes;
  for (int i = 0; i < count; ++i) bytes += msft.NextRecord() + ibm.NextRecord();
  return bytes;
}

const std::vector<Mischief>& Mischiefs() {
  static const std::vector<Mischief> all{
      {"a burst", [](Peer& peer, SentQuotes& msft, SentQuotes& ibm) { peer.Send(Both(msft, ibm, 2000)); }},
      {"a stray chunk",
       [](Peer& peer, SentQuotes&, SentQuotes&) {
         peer.Send("ES?");
         peer.Rest(5ms);
       }},
      {"noise",
       [](Peer& peer, SentQuotes&, SentQuotes&) {
         peer.Send(Noise(3000, 1));
         peer.Rest(5ms);
       }},
      {"a reset inside a record",
       [](Peer& peer, SentQuotes& msft, SentQuotes& ibm) {
         const std::string records = Both(msft, ibm, 10);
         peer.Send(records.substr(0, records.size() - 20));
         peer.Rest(2ms);
         peer.Reset();
       }},
      {"lengths that lie",
       [](Peer& peer, SentQuotes&, SentQuotes&) {
         for (const int length : {0, -5, 3, 1000, 32767}) {
           peer.Send(Level1Wire("L1").Symbol("MSFT").Length(static_cast<std::int16_t>(length)).Bytes());
           peer.Rest(2ms);
         }
       }},
      {"texts",
       [](Peer& peer, SentQuotes&, SentQuotes&) {
         peer.Send(Level1Wire("S1").Symbol("\x1b[2J\x07MSFT\x9b").Last(1).Volume(100).Bytes());
         peer.Send(Level1Wire("S1")
                       .Symbol("IBM")
                       .Text(18, std::string(30'000, '='))
                       .Stamp("99999999999999")
                       .Bytes());
         peer.Send(Level1Wire("S1").Symbol("IBM").Stamp("=1+1\x1b]0;x\x07hi!").Bytes());
         peer.Rest(2ms);
       }},
      {"symbols that nobody asked for",
       [](Peer& peer, SentQuotes&, SentQuotes&) {
         std::string bytes;
         for (int i = 0; i < 2000; ++i) {
           bytes += Level1Wire("L1").Symbol("X" + std::to_string(i)).Last(i + 1).Volume(100 * i).Bytes();
         }
         peer.Send(bytes);
       }},
      {"a second greeting and a refusal",
       [](Peer& peer, SentQuotes&, SentQuotes&) {
         peer.Send("OK<CONNECT><SERVERTIME>01/20/2011 09:30:00</SERVERTIME></CONNECT>");
         peer.Rest(2ms);
         peer.Send("LO<STATUSCODE>1</STATUSCODE><STATUSDESC>\x1b[31mgo away\x1b[0m</STATUSDESC>");
         peer.Rest(2ms);
       }},
      {"a list of sources without an end",
       [](Peer& peer, SentQuotes&, SentQuotes&) {
         peer.Send("ES<SOURCES>" + std::string(100'000, 'x'));
         peer.Rest(5ms);
       }},
      {"single bytes",
       [](Peer& peer, SentQuotes& msft, SentQuotes& ibm) {
         for (const char byte : Both(msft, ibm, 3)) {
           peer.Send({&byte, 1});
           peer.Rest(1ms);
         }
       }},
  };
  return all;
}

// QuoteTracker's part of the conversation up to the first quote, in pieces of so many bytes.
void Converse(Peer& peer, std::size_t piece) {
  const auto say = [&](std::string_view bytes) {
    for (; !bytes.empty(); bytes.remove_prefix(std::min(piece, bytes.size()))) {
      peer.Send(bytes.substr(0, piece));
      if (piece < bytes.size()) peer.Rest(1ms);
    }
  };
  say("OK<CONNECT><SERVERTIME>01/20/2011 09:30:00</SERVERTIME><SERVERVERSION>4.1</SERVERVERSION></CONNECT>");
  peer.ReceiveUntil("\xFF");
  say("LO<STATUSCODE>0</STATUSCODE><STATUSDESC>Login accepted</STATUSDESC>");
  peer.ReceiveUntil("\xFF");
  say("OK<STREAMER>SWISS.SDF</STREAMER>");
  peer.ReceiveUntil("\xFF");
}

// How many saves the day has: as many as a run of all tests has time for, or as the environment says. Whoever
// changes how workbooks are saved, or how quotes come, lets it have 3000.
int SavesOfTheDay() {
  const char* wanted = std::getenv("MIRELO_LONG_DAY");
  return wanted != nullptr ? std::atoi(wanted) : 300;
}

// Memory is a little more or less used each time.
constexpr std::size_t kResidentSlack = 4U << 20;
constexpr std::size_t kInUseSlack = 256U << 10;

void ExpectNothingLeftBehind(const ProcessUse& before, const ProcessUse& after) {
  EXPECT_EQ(after.descriptors, before.descriptors);
  EXPECT_LT(after.in_use, before.in_use + kInUseSlack);
  if (!kIsSanitized) {
    EXPECT_LT(after.resident, before.resident + kResidentSlack);
  }
}

class StreamedLongDay : public LongDay {
 protected:
  void BeginStreaming() {
    Begin({{"UpdateEvery", "1"},
           {"Seconds", "0"},
           {"ComQuoteSource", "Alpstein Finance (delayed)"},
           {"VerticalTable", "1"},
           {"RowsLimit", "100"}});
  }

  void Rounds(int round_saves) {
    for (const Mischief& mischief : Mischiefs()) {
      SCOPED_TRACE(mischief.name);
      ASSERT_NO_FATAL_FAILURE(Round(mischief, round_saves / 6));
    }
  }

 private:
  void Round(const Mischief& mischief, int part);
};

void StreamedLongDay::Round(const Mischief& mischief, int part) {
  // The stand-in, which says garbage itself, until it is killed.
  StartTracker({"--chunking", "random", "--stream-fault", "garbage@quotes:9", "--stream-fault",
                "long-length@quotes:13", "--seed", std::to_string(replays)});
  PassSaves(part);
  tracker.Kill();
  PassSaves(part / 2);  // nobody is there

  std::atomic<bool> done = false;
  const auto server = Serve(StreamPort(), [&](Peer& peer) {
    Converse(peer, peer.Index() == 0 ? 7 : 1000);
    peer.Send(Both(msft, ibm, 5));
    peer.Rest(3ms);
    if (!done.exchange(true)) mischief.act(peer, msft, ibm);
    while (peer.Send(Both(msft, ibm, 3))) peer.Rest(10ms);
  });
  ASSERT_TRUE(PassUntil([&] { return done.load(); })) << "nobody called\n" << LastLines();
  ASSERT_NO_FATAL_FAILURE(GoOnAndLook(part));
  server->Stop();
  PassSaves(part / 2);
}

TEST_F(StreamedLongDay, GoesOnShowsOnlyWhatWasSentAndLeavesNothingBehind) {
  const int round_saves = SavesOfTheDay() / static_cast<int>(2 * Mischiefs().size());
  BeginStreaming();
  tracker.Kill();
  ASSERT_NO_FATAL_FAILURE(Rounds(round_saves));
  const ProcessUse before = UseAtRest();
  ASSERT_NO_FATAL_FAILURE(Rounds(round_saves));
  ExpectNothingLeftBehind(before, UseAtRest());
  End();
}

// A workbook of which a save takes a good while.
TEST_F(StreamedLongDay, WritesQuotesWhileTheWorkbookIsSaved) {
  constexpr std::int32_t kRowsOfMine = 20'000;
  const auto sheet = document->Application()->Worksheets()->Add();
  VariantArray table(1, kRowsOfMine, 1, 8);
  for (std::int32_t row = 1; row <= kRowsOfMine; ++row) {
    for (std::int32_t column = 1; column <= 8; ++column) table(row, column) = Variant(row * 1.37 / column);
  }
  sheet->Range("A1")->Resize(kRowsOfMine, 8)->Value(table);
  BeginStreaming();
  tracker.Kill();
  const auto server = Serve(StreamPort(), [&](Peer& peer) {
    Converse(peer, 1000);
    while (peer.Send(Both(msft, ibm, 3))) peer.Rest(5ms);
  });
  ASSERT_TRUE(GoesOn()) << LastLines();
  ASSERT_TRUE(PassUntil([&] { return keeper->IsSaving(); }));
  const int save = saves;
  const std::int64_t written = day->Written();
  EXPECT_TRUE(PassUntil([&] { return saves != save || day->Written() > written + 10; }));
  EXPECT_EQ(saves, save) << "the quotes came behind the save";
  EXPECT_TRUE(keeper->IsSaving());
  ExpectTrueCells();
  server->Stop();
  End();
}

// One of the things that go wrong with a reply to a request for quotes.
struct Misreply {
  const char* name;
  std::function<std::string(SentQuotes& msft, SentQuotes& ibm)> reply;
  bool spares_msft = false;  // what is wrong is wrong with a value of IBM alone
};

constexpr const char* kHead = "HTTP/1.0 200 OK\r\nContent-Type: text/plain\r\n\r\n";

std::string Lines(const std::string& first, const std::string& second) {
  return std::string(kHead) + "OK\r\n" + first + "\r\n" + second;
}

// A line of IBM, of which one field holds something else.
std::string LineWith(SentQuotes& ibm, std::size_t field, const std::string& text) {
  std::string line = ibm.NextLine();
  std::size_t begin = 0;
  for (; field > 0; --field) begin = line.find(',', begin) + 1;
  return line.replace(begin, line.find(',', begin) - begin, text);
}

const std::vector<Misreply>& Misreplies() {
  constexpr std::size_t kLast = 3;
  constexpr std::size_t kTick = 7;
  constexpr std::size_t kVolume = 8;
  constexpr bool kSparesMsft = true;
  static const std::vector<Misreply> all{
      {"noise", [](SentQuotes&, SentQuotes&) { return Noise(2000, 2); }},
      {"nothing", [](SentQuotes&, SentQuotes&) { return std::string(); }},
      {"a folded head",
       [](SentQuotes& msft, SentQuotes& ibm) {
         const std::string reply = Lines(msft.NextLine(), ibm.NextLine());
         return "HTTP/1.0 200 OK\r\n\tx: " + std::string(999, '9') + reply.substr(reply.find("\r\n"));
       }},
      {"a long head",
       [](SentQuotes&, SentQuotes&) {
         std::string head = "HTTP/1.0 200 OK\r\n";
         for (int i = 0; i < 2000; ++i)
           head += "X-" + std::to_string(i) + ": " + std::string(99, 'x') + "\r\n";
         return head + "\r\nOK\r\n";
       }},
      {"a redirect to itself",
       [](SentQuotes&, SentQuotes&) { return std::string("HTTP/1.0 302 Found\r\nLocation: /\r\n\r\n"); }},
      {"a refusal", [](SentQuotes&, SentQuotes&) { return std::string(kHead) + "ERROR\r\n"; }},
      {"no lines", [](SentQuotes&, SentQuotes&) { return std::string(kHead) + "OK"; }},
      {"a line too few", [](SentQuotes& msft, SentQuotes&) { return kHead + ("OK\r\n" + msft.NextLine()); }},
      {"a line too many",
       [](SentQuotes& msft, SentQuotes& ibm) {
         return Lines(msft.NextLine(), ibm.NextLine()) + "\r\n" + ibm.NextLine();
       }},
      {"a line too short",
       [](SentQuotes& msft, SentQuotes&) { return Lines(msft.NextLine(), "IBM,01/20/2011,09:30:00"); }},
      {"lines in another order",
       [](SentQuotes& msft, SentQuotes& ibm) { return Lines(ibm.NextLine(), msft.NextLine()); }},
      {"no price",
       [](SentQuotes& msft, SentQuotes& ibm) { return Lines(msft.NextLine(), LineWith(ibm, kLast, "N/A")); },
       kSparesMsft},
      {"no volume",
       [](SentQuotes& msft, SentQuotes& ibm) {
         return Lines(msft.NextLine(), LineWith(ibm, kVolume, "N/A"));
       },
       kSparesMsft},
      {"a text longer than a cell",
       [](SentQuotes& msft, SentQuotes& ibm) {
         return Lines(msft.NextLine(), LineWith(ibm, kTick, std::string(40'000, '=')));
       },
       kSparesMsft},
      {"a text for the terminal",
       [](SentQuotes& msft, SentQuotes& ibm) {
         return Lines(msft.NextLine(), LineWith(ibm, kTick, "\x1b[2J\x07\x9b"));
       },
       kSparesMsft},
  };
  return all;
}

class AskedLongDay : public LongDay {
 protected:
  void BeginAsking() {
    Begin({{"UpdateEvery", "1"}, {"Seconds", "1"}, {"VerticalTable", "1"}, {"RowsLimit", "100"}});
  }

  void Rounds(int round_saves) {
    for (const Misreply& misreply : Misreplies()) {
      SCOPED_TRACE(misreply.name);
      ASSERT_NO_FATAL_FAILURE(Round(misreply, round_saves / 6));
    }
  }

 private:
  void Round(const Misreply& misreply, int part);
};

void AskedLongDay::Round(const Misreply& misreply, int part) {
  StartTracker({"--http-fault", "garbage:3", "--seed", std::to_string(replays)});
  PassSaves(part);
  tracker.Kill();
  PassSaves(part / 2);  // nobody is there

  std::atomic<int> misreplies = 0;
  std::atomic<bool> in_turn = !misreply.spares_msft;
  const auto server = Serve(HttpPort(), [&](Peer& peer) {
    peer.ReceiveUntil("\r\n\r\n");
    if (!in_turn || peer.Index() % 3 == 1) {
      peer.Send(misreply.reply(msft, ibm));
      ++misreplies;
    } else {
      peer.Send(Lines(msft.NextLine(), ibm.NextLine()));
    }
    peer.ShutdownWrite();
  });
  ASSERT_TRUE(PassUntil([&] { return misreplies >= 3; })) << "nobody asked\n" << LastLines();
  if (misreply.spares_msft) {
    const std::int32_t newest = msft.Newest();
    ASSERT_TRUE(PassUntil([&] { return Shown(msft) > newest; })) << "MSFT stands still\n" << LastLines();
  }
  in_turn = true;
  ASSERT_NO_FATAL_FAILURE(GoOnAndLook(part));
  server->Stop();
  PassSaves(part / 2);
}

TEST_F(AskedLongDay, GoesOnShowsOnlyWhatWasSentAndLeavesNothingBehind) {
  const int round_saves = SavesOfTheDay() / static_cast<int>(2 * Misreplies().size());
  BeginAsking();
  tracker.Kill();
  ASSERT_NO_FATAL_FAILURE(Rounds(round_saves));
  const ProcessUse before = UseAtRest();
  ASSERT_NO_FATAL_FAILURE(Rounds(round_saves));
  ExpectNothingLeftBehind(before, UseAtRest());
  End();
}

}  // namespace
}  // namespace mirelo::testing
