#include "scenarios/long_day.h"

#include <arpa/inet.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <utility>

#include "adapters/poll/poll_loop.h"
#include "adapters/sodium/sodium_vault.h"
#include "automation/variant.h"
#include "host/excel/application.h"
#include "host/excel/constants.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "person/attended_desktop.h"
#include "person/dialog_person.h"
#include "support/hurried_loop.h"

namespace mirelo::testing {

namespace {

using namespace std::chrono_literals;

constexpr std::int64_t kTimesAsFast = 100;
constexpr auto kSaveEvery = 20ms;
constexpr auto kPatienceOfADay = 60s;
constexpr rlim_t kFullFile = 4096;
constexpr std::size_t kLinesKept = 40;

constexpr const char* kTable = "Dovanta2_Quotes";
constexpr const char* kHistory = "Quotes_Vertical(MSFT)";
constexpr std::int32_t kFirstRow = 3;

// An address of the loopback that no other test listens at, so that the ports stay free while nobody serves.
std::uint32_t OwnAddress() {
  const auto process = static_cast<std::uint32_t>(::getpid());
  return (127U << 24) | (1U << 16) | (process & 0xFFFFU);
}

std::string OwnAddressText() {
  const in_addr address{htonl(OwnAddress())};
  char text[INET_ADDRSTRLEN];
  return ::inet_ntop(AF_INET, &address, text, sizeof text);
}

std::int32_t NumberIn(host::excel::Worksheet& sheet, std::int32_t row, std::int32_t last, std::int32_t volume,
                      const SentQuotes& quotes) {
  const Variant price = sheet.Cells(row, last)->Value();
  const Variant sum = sheet.Cells(row, volume)->Value();
  if (price.type() != Variant::Type::Double || sum.type() != Variant::Type::Double) return 0;
  return quotes.NumberOf(price.ToDouble(), sum.ToDouble());
}

}  // namespace

FullDisk::FullDisk() {
  std::signal(SIGXFSZ, SIG_IGN);
  ::getrlimit(RLIMIT_FSIZE, &before_);
  const rlimit full{kFullFile, before_.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &full);
}

FullDisk::~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &before_); }

LongDay::LongDay() : host(folder / "registry.db"), installed(host), tracker(OwnAddressText()) {
  sodium::SodiumVault vault(folder.path());
  vault.Set({.name = "MireloDemo", .secret = "demo-secret"});
  host.RunOn(std::make_unique<HurriedLoop>(std::make_unique<poll::PollLoop>(), kTimesAsFast));
  host.KeepCredentialsIn(folder.path());
  host.FetchThrough([this](host::WinInetApi& inner) {
    auto mended = std::make_unique<wire::MendedReplies>(inner);
    replies = mended.get();
    return mended;
  });
  host.WaitForWholeReplies();
  StartTracker({});
  host.Override("Webaddress", OwnAddressText());
  host.OverrideHttpPort(tracker.HttpPort());
  host.Override("SocketPort", std::to_string(tracker.StreamPort()));
  wishes.tickers = {msft.Ticker(), ibm.Ticker()};
  wishes.columns = {"Ticker", "Last", "Volume", "LastVolume", "Tick"};
  for (const char* field : {"Last", "Volume", "LastVolume"}) wishes.ticks.push_back({"MSFT", field});
}

LongDay::~LongDay() {
  keeper.reset();
  day.reset();
}

void LongDay::Begin(Settings settings) {
  wishes.settings = std::move(settings);
  auto desktop = std::make_unique<AttendedDesktop>(nowhere);
  DialogPerson person(wishes, *desktop);
  host.ShowOn(std::move(desktop));
  host.internet();  // makes the replies' mender
  day.emplace(host.loop(), host.observed_sockets(), *replies, document->Application());
  const auto note = [this](const std::string& line) {
    if (told.size() == kLinesKept) told.erase(told.begin());
    told.push_back(line);
  };
  day->Status.Subscribe(note);
  day->ShowDialog();
  ASSERT_FALSE(person.Complained()) << person.Complained()->text;
  keeper.emplace(
      host.loop(), *document, folder / "day.xlsx",
      [this] {
        ++saves;
        day->Fit();
      },
      [](const std::string&) {});
  keeper->Status.Subscribe(note);
  day->Start();
  keeper->SaveAtIntervals(kSaveEvery);
}

void LongDay::End() {
  day->Stop();
  EXPECT_EQ(keeper->SaveAtEnd(), folder / "day.xlsx") << LastLines();
}

void LongDay::PassSaves(int count) {
  const int last = saves + count;
  const auto is_done = [&] { return saves > last || (saves == last && !keeper->IsSaving()); };
  EXPECT_TRUE(PassUntil(is_done)) << "saving stands still";
}

bool LongDay::PassUntil(const std::function<bool()>& done) {
  const auto end = std::chrono::steady_clock::now() + kPatienceOfADay;
  bool is_done = false;
  day->RunUntil([&] { return (is_done = done()) || std::chrono::steady_clock::now() > end; });
  return is_done;
}

bool LongDay::GoesOn() {
  const std::int32_t of_msft = msft.Newest();
  const std::int32_t of_ibm = ibm.Newest();
  return PassUntil([&] { return Shown(msft) > of_msft && Shown(ibm) > of_ibm; });
}

void LongDay::StartTracker(const std::vector<std::string>& more) {
  const auto file = folder / ("replay-" + std::to_string(replays++) + ".csv");
  std::ofstream text(file);
  text << "Ticker,Date,Time,Last,Volume\n";
  for (int second = 0; second < 60; ++second) {
    const std::string time = "09:30:" + std::string(second < 10 ? "0" : "") + std::to_string(second);
    for (int i = second == 30 ? 200 : 5; i > 0; --i) {
      for (SentQuotes* quotes : {&msft, &ibm}) {
        const std::int32_t number = quotes->Next();
        text << quotes->Ticker() << ",01/20/2011," << time << ',' << quotes->LastText(number) << ','
             << SentQuotes::Volume(number) << '\n';
      }
    }
  }
  text.close();
  std::vector<std::string> arguments{"--replay", file.string(), "--speed", "50"};
  arguments.insert(arguments.end(), more.begin(), more.end());
  tracker.Start(arguments);
  std::filesystem::remove(file);
}

std::unique_ptr<LoopbackServer> LongDay::Serve(std::uint16_t port, LoopbackServer::Script script) const {
  return std::make_unique<LoopbackServer>(std::move(script), OwnAddress(), port);
}

std::int32_t LongDay::Shown(const SentQuotes& quotes) {
  const auto sheet = document->Application()->Worksheets()->Item(kTable);
  return NumberIn(*sheet, &quotes == &msft ? kFirstRow : kFirstRow + 1, 2, 3, quotes);
}

void LongDay::ExpectTrueHistory(const host::Document& book) {
  const auto sheet = book.Application()->Worksheets()->Item(kHistory);
  const auto is_empty = [&](std::int32_t row) {
    return sheet->Cells(row, 1)->Value().IsEmpty() && sheet->Cells(row, 2)->Value().IsEmpty();
  };
  std::int32_t last = sheet->Cells(1, 1)->SpecialCells(host::excel::xlCellTypeLastCell)->Row();
  while (last >= kFirstRow && is_empty(last)) --last;  // rows that have a format only
  std::int32_t before = 1;
  for (std::int32_t row = kFirstRow; row <= last; ++row) {
    const std::int32_t number = NumberIn(*sheet, row, 1, 2, msft);
    const Variant traded = sheet->Cells(row, 3)->Value();
    if (number >= before && traded.type() == Variant::Type::Double && traded.ToDouble() >= 0) {
      before = number;
      continue;
    }
    ADD_FAILURE() << "row " << row << " holds \"" << sheet->Cells(row, 1)->Value().ToText() << "\", \""
                  << sheet->Cells(row, 2)->Value().ToText() << "\", \"" << traded.ToText() << "\", quote "
                  << number << " behind quote " << before;
    return;
  }
}

void LongDay::ExpectTrueCells() {
  const auto sheet = document->Application()->Worksheets()->Item(kTable);
  for (const std::int32_t row : {kFirstRow, kFirstRow + 1}) {
    const Variant last = sheet->Cells(row, 2)->Value();
    const Variant traded = sheet->Cells(row, 3)->Value();
    // What came last was said to have no price, or to have traded no number that it could be known by.
    if (last.type() != Variant::Type::Double || traded.type() == Variant::Type::String) continue;
    const SentQuotes& quotes = row == kFirstRow ? msft : ibm;
    EXPECT_GT(Shown(quotes), 0) << "the table shows " << last.ToText() << " with " << traded.ToText()
                                << " of " << quotes.Ticker();
    EXPECT_GE(Val(sheet->Cells(row, 4)->Value().ToText()), 0) << "LastVolume of " << quotes.Ticker();
  }
}

void LongDay::GoOnAndLook(int saves_of_a_part) {
  ASSERT_TRUE(GoesOn()) << LastLines();
  PassSaves(saves_of_a_part);
  {
    const FullDisk full;
    PassSaves(saves_of_a_part);
    ASSERT_TRUE(GoesOn()) << LastLines();
  }
  PassSaves(saves_of_a_part);
  EXPECT_TRUE(keeper->State().starts_with("saved ")) << keeper->State();
  ExpectTrueCells();
  ExpectTrueHistory(*document);
  ExpectTrueHistory(*workbook::Files().Open(folder / "day.xlsx"));
}

ProcessUse LongDay::UseAtRest() {
  ProcessUse least;
  for (int i = 0; i < 5; ++i) {
    PassSaves(2);
    EXPECT_TRUE(PassUntil([&] { return keeper->IsSaving(); }));  // it has a line then
    const ProcessUse now = ProcessUse::Now();
    if (i == 0 || now.descriptors < least.descriptors) least.descriptors = now.descriptors;
    if (i == 0 || now.resident < least.resident) least.resident = now.resident;
    if (i == 0 || now.in_use < least.in_use) least.in_use = now.in_use;
  }
  return least;
}

std::string LongDay::LastLines() const {
  std::string lines;
  for (const std::string& line : told) lines += "  " + line + "\n";
  return lines;
}

}  // namespace mirelo::testing
