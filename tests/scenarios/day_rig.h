#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "automation/variant.h"
#include "day/quote_journal.h"
#include "day/quote_trail.h"
#include "day/working_day.h"
#include "dialog/scripted_portfolios.h"
#include "person/attended_desktop.h"
#include "person/dialog_wishes.h"
#include "support/answering_internet.h"
#include "support/manual_clock.h"
#include "support/manual_loop.h"
#include "support/memory_registry.h"
#include "support/memory_vault.h"
#include "support/memory_winsock.h"
#include "support/recording_system.h"
#include "support/test_host.h"
#include "terminal/output.h"
#include "wire/mended_replies.h"
#include "wire/observed_sockets.h"

namespace mirelo::testing {

// A working day on a machine whose time the test moves, and with a QuoteTracker that the test plays. The day
// begins at 8:36:13 on 20 January 2011, with a workbook that was never used.
class Day : public ::testing::Test {
 protected:
  Day();

  // Fills the settings dialog as `wishes` says, presses its Go, and begins what follows. The result is the
  // dialog's.
  std::int32_t Begin();
  // Moves clock and loop.
  void Pass(std::chrono::milliseconds time);

  // The cell of a sheet, and its text.
  Variant Cell(const std::string& sheet, std::int32_t row, std::int32_t column);
  std::string Text(const std::string& sheet, std::int32_t row, std::int32_t column);
  // A column from row 3 down to the first empty cell.
  std::vector<std::string> Column(const std::string& sheet, std::int32_t column);

  static constexpr const char* kTable = "Dovanta2_Quotes";
  static std::string History(const std::string& ticker) { return "Quotes_Vertical(" + ticker + ")"; }

  ManualLoop loop;
  ManualClock clock;
  MemoryRegistry registry;
  AnsweringInternet internet;
  MemoryWinsock winsock;
  wire::ObservedSockets sockets{winsock, loop};
  wire::MendedReplies replies{internet};
  MemoryVault vault;
  RecordingSystem system;
  terminal::TextOutput printed;
  AttendedDesktop desktop{printed};
  TestHost host;
  host::HostScope installed;
  ScriptedPortfolios portfolios;
  workbook::Spreadsheet spreadsheet = workbook::Spreadsheet::New();
  DialogWishes wishes;
  day::QuoteTrail* trail = nullptr;      // that is followed, if any
  day::QuoteJournal* journal = nullptr;  // that quotes are kept in, if any
  std::vector<std::string> told;         // the day's lines for a person
  std::function<void()> behind_go = [] {
  };  // what somebody does between the dialog's Go and the day's beginning
  std::optional<day::WorkingDay> day;
};

}  // namespace mirelo::testing
