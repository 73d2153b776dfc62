#include "app/day_view.h"

#include <chrono>

#include "app/text_table.h"
#include "app/workbook_keeper.h"
#include "day/quote_rows.h"
#include "day/working_day.h"
#include "terminal/standard_streams.h"
#include "worksheet/quote_table.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

namespace {

constexpr std::chrono::seconds kLinePace{10};

}  // namespace

DayView::DayView(host::MessageLoop& loop, day::WorkingDay& day, WorkbookKeeper& keeper)
    : loop_(loop), day_(day), keeper_(keeper), terminal_(Out().IsTerminal()) {
  day_.Status.Subscribe([this](const std::string& text) { Tell(text); });
  keeper_.Status.Subscribe([this](const std::string& text) { TellOfSaving(text); });
}

DayView::~DayView() { End(); }

void DayView::Begin() {
  if (!terminal_) return PrintLater();
  live_.emplace(loop_, day_.Tables().Columns(), day_.Tables().Rows(), [this] { return Status(); });
}

void DayView::End() {
  has_ended_ = true;
  live_.reset();
  loop_.StopTimer(timer_);
}

void DayView::Summarize(const std::string& file) const {
  if (!day_.HasTables()) return;
  const day::DayTables& tables = day_.Tables();
  TextTable table(tables.Columns());
  for (const auto& row : tables.Rows()) table.AddRow(day::TextsOf(row));
  if (terminal_) Out() << "\n";
  Out() << table.ToText(terminal_) << day_.Came().Count() << " quotes came, " << day_.Written()
        << " of them new\n";
  if (file.empty()) return Out().Flush();
  Out() << "Saved in " << file << "\nLook at the sheet " << kQuoteTable << " for the table";
  if (const auto& sheets = tables.HistorySheets(); !sheets.empty()) {
    Out() << ", and at " << sheets.front();
    if (sheets.size() > 1) Out() << " and " << sheets.size() - 1 << " more like it";
    Out() << " for the history and its charts";
  }
  Out() << "\n";
  Out().Flush();
}

void DayView::Tell(const std::string& text) {
  state_ = text;
  if (!terminal_) Err() << text << "\n";
}

// The last save comes when there is no status line any more that would show it.
void DayView::TellOfSaving(const std::string& text) {
  Tell(text);
  if (terminal_ && has_ended_) Err() << text << "\n";
}

void DayView::PrintLater() {
  timer_ = loop_.StartTimer(kLinePace, [this] {
    Err() << Status() << "\n";
    PrintLater();
  });
}

std::string DayView::Status() { return state_ + "; " + day_.Came().Text() + "; " + keeper_.State(); }

}  // namespace mirelo::app
