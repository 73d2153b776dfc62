#include "app/live/day_view.h"

#include "app/output/shown_quote.h"
#include "app/output/text_table.h"
#include "app/workbook/workbook_keeper.h"
#include "day/working_day.h"
#include "terminal/standard_streams.h"
#include "worksheet/quote_table.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

DayView::DayView(host::MessageLoop& loop, day::WorkingDay& day, WorkbookKeeper& keeper)
    : loop_(loop), day_(day), keeper_(keeper) {
  day_.Status.Subscribe([this](const std::string& text) { Tell(text); });
  keeper_.Status.Subscribe([this](const std::string& text) { Tell(text); });
}

DayView::~DayView() { End(); }

void DayView::Begin() {
  if (Out().IsTerminal()) {
    screen_ = LiveScreen::Open(loop_, LiveModel(day_.Tables().Columns(), day_.PriceFormat()),
                               day_.Tables().Rows(), [this] { return About(); },
                               {[this] { EndWished.Raise(); }, [this] { keeper_.SaveNow(); }});
  }
  if (screen_ == nullptr) PrintLater();
}

void DayView::End() {
  screen_.reset();
  loop_.StopTimer(timer_);
}

void DayView::Summarize(const std::string& file) const {
  if (!day_.HasTables()) return;
  const day::DayTables& tables = day_.Tables();
  TextTable table(tables.Columns());
  for (const auto& row : tables.Rows()) table.AddRow(ShownQuote(tables.Columns(), row, day_.PriceFormat()));
  Out() << table.ToText(Out().IsTerminal()) << day_.Came().Count() << " quotes came, " << day_.Written()
        << " of them new\n";
  if (file.empty()) return Out().Flush();
  Out() << "Saved in " << file << "\nLook at the sheet " << kQuoteTable << " for the table";
  if (const auto& sheets = tables.HistorySheets(); !sheets.empty()) {
    Out() << ", and at " << sheets.front();
    if (sheets.size() > 1) Out() << " and " << sheets.size() - 1 << " more like it";
    Out() << (tables.HasCharts() ? " for the history and its charts" : " for the history");
  }
  Out() << "\n";
  Out().Flush();
}

// Once the screen has gone, how the last save goes is told as well.
void DayView::Tell(const std::string& text) {
  state_ = text;
  if (screen_ == nullptr && seldom_.IsDue(text)) Err() << text << "\n";
}

void DayView::PrintLater() {
  timer_ = loop_.StartTimer(Seldom::kPace, [this] {
    Err() << state_ << "; " << day_.Came().Text() << "; " << keeper_.State() << "\n";
    PrintLater();
  });
}

std::vector<std::string> DayView::About() {
  const int count = day_.Reconnects();
  const std::string reconnects = count == 1 ? "1 reconnect" : std::to_string(count) + " reconnects";
  return {day_.Source() + "  " + state_, day_.Came().Text() + "; " + reconnects,
          "Workbook " + keeper_.State(), "? help  s save  q end"};
}

}  // namespace mirelo::app
