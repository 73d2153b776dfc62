#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/files.h"
#include "app/workbook/workbook_keeper.h"
#include "automation/number.h"
#include "day/working_day.h"
#include "host/host.h"
#include "linux/linux_host.h"
#include "person/dialog_wishes.h"
#include "scenarios/sent_quotes.h"
#include "scenarios/tracker_process.h"
#include "support/loopback_server.h"
#include "support/process_use.h"
#include "support/sanitized.h"
#include "support/temp_directory.h"
#include "terminal/output.h"
#include "wire/mended_replies.h"

namespace mirelo::testing {

// No file of this process grows past some bytes: what a full disk does to it, for as long as this lives.
class FullDisk {
 public:
  FullDisk();
  ~FullDisk();
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit before_{};
};

// Takes messages and keeps none: over a day they would take memory.
class Nowhere : public terminal::Output {
  void Put(std::string_view) override {}
};

// A working day as the program plays it, on this machine, with real files and sockets, but a hundred times as
// fast: a day of thousands of saves is over in seconds. QuoteTracker comes and goes as the test has it,
// always at the same ports. Of two tickers, MSFT and IBM, whatever is sent is known by its number.
class LongDay : public ::testing::Test {
 protected:
  using Settings = std::vector<DialogWishes::Setting>;

  LongDay();
  ~LongDay() override;

  // A long day saves hundreds of times while servers of the test run on threads of this process.
  void SetUp() override {
    if (kIsSanitized) {
      GTEST_SKIP() << "the sanitizers' memory stands still now and then in a process that is forked beside "
                      "other threads, as the file writer's is";
    }
  }

  // Fills the settings dialog, presses its Go, and begins what follows, with a save each 20 ms of the day.
  void Begin(Settings settings);
  void End();

  // Runs the day until the workbook was saved so many times more, by saves that begin from now on, or could
  // not be.
  void PassSaves(int count);
  // Runs the day until `done`; false when that takes longer than anybody waits.
  bool PassUntil(const std::function<bool()>& done);
  // Runs the day until quotes that are yet to be sent have reached the cells of both tickers.
  bool GoesOn();

  // The stand-in as a process, which replays new quotes.
  void StartTracker(const std::vector<std::string>& more);
  // A server of the test's own at QuoteTracker's port.
  std::unique_ptr<LoopbackServer> Serve(std::uint16_t port, LoopbackServer::Script script) const;
  std::uint16_t StreamPort() const { return static_cast<std::uint16_t>(tracker.StreamPort()); }
  std::uint16_t HttpPort() const { return static_cast<std::uint16_t>(tracker.HttpPort()); }

  // The number of the quote that the table's cells show; 0 when they show none that was sent.
  std::int32_t Shown(const SentQuotes& quotes);
  // That all rows of the history are quotes that were sent, in the order in which they were.
  void ExpectTrueHistory(const host::Document& book);
  void ExpectTrueCells();
  // What each round of the day ends with, while a server of the test's own serves: the day goes on, also
  // while the disk is full; then all is true that it shows and has saved. Fails fatally where it does not go
  // on.
  void GoOnAndLook(int saves_of_a_part);
  // What the process uses where the day stands still, nobody serving it.
  ProcessUse UseAtRest();

  std::string LastLines() const;

  TempDirectory folder;
  Nowhere nowhere;
  LinuxHost host;
  host::HostScope installed;
  wire::MendedReplies* replies = nullptr;  // the host's, as soon as it has an HTTP client
  TrackerProcess tracker;
  SentQuotes msft{"MSFT", 2000};
  SentQuotes ibm{"IBM", 500000};
  DialogWishes wishes;
  std::unique_ptr<host::Document> document = workbook::Files().New();
  std::optional<day::WorkingDay> day;
  std::optional<app::WorkbookKeeper> keeper;
  std::vector<std::string> told;  // the newest of the day's lines for a person
  int saves = 0;
  int replays = 0;
};

}  // namespace mirelo::testing
