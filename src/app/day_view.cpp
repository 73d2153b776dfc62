#include "app/day_view.h"

#include <unistd.h>

#include <chrono>
#include <iostream>

#include "app/text_table.h"
#include "app/workbook_keeper.h"
#include "app/working_day.h"
#include "worksheet/quote_table.h"

namespace mirelo::app {

namespace {

constexpr std::chrono::seconds kLinePace{10};

}  // namespace

DayView::DayView(host::MessageLoop& loop, WorkingDay& day, WorkbookKeeper& keeper)
    : loop_(loop), day_(day), keeper_(keeper), terminal_(::isatty(STDOUT_FILENO) == 1) {
  day_.Status.Subscribe([this](const std::string& text) { Tell(text); });
  keeper_.Status.Subscribe([this](const std::string& text) { Tell(text); });
}

DayView::~DayView() { End(); }

void DayView::Begin() {
  if (!terminal_) return PrintLater();
  live_.emplace(loop_, day_.Tables().Columns(), day_.Tables().Rows(), [this] { return Status(); });
}

void DayView::End() {
  live_.reset();
  loop_.StopTimer(timer_);
}

void DayView::Summarize(const std::string& file) const {
  if (!day_.HasTables()) return;
  const DayTables& tables = day_.Tables();
  TextTable table(tables.Columns());
  for (const auto& row : tables.Rows()) table.AddRow(row);
  std::cout << (terminal_ ? "\n" : "") << table.ToText(terminal_) << day_.Came().Count() << " quotes came, "
            << day_.Written() << " of them new\n";
  if (file.empty()) return;
  std::cout << "Saved in " << file << "\nLook at the sheet " << kQuoteTable << " for the table";
  if (const auto& sheets = tables.HistorySheets(); !sheets.empty()) {
    std::cout << ", and at " << sheets.front();
    if (sheets.size() > 1) std::cout << " and " << sheets.size() - 1 << " more like it";
    std::cout << " for the history and its charts";
  }
  std::cout << std::endl;
}

void DayView::Tell(const std::string& text) {
  state_ = text;
  if (!terminal_) std::cerr << text << '\n';
}

void DayView::PrintLater() {
  timer_ = loop_.StartTimer(kLinePace, [this] {
    std::cerr << Status() << '\n';
    PrintLater();
  });
}

std::string DayView::Status() { return state_ + "; " + day_.Came().Text() + "; " + keeper_.State(); }

}  // namespace mirelo::app
