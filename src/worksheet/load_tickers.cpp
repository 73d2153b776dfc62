// The way back from the quote table on the sheet to the dialog: columns, tickers and mode of update.

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "automation/number.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "snapshot/column_vocabulary.h"
#include "worksheet/cell_text.h"
#include "worksheet/comma_list.h"
#include "worksheet/quote_table.h"

namespace mirelo {

namespace {

using host::excel::Worksheet;

// From here on a walk down the sheet ran off its foot: there is no ticker row.
constexpr std::int32_t kFootOfSheet = 50000;

// The first row at which tickers end. Error 91 for no table.
std::int32_t EndOfTickers(Worksheet* table) {
  return Referred(table).Range(kFirstHeader)->End(host::excel::xlDown)->Row();
}

}  // namespace

// The quote table on the sheet while it is read. The statements are those of LoadTickers.
struct frmMirelo::TableReading {
  Frame& frame;
  frmMirelo& form;
  Worksheet* table;  // null where there is none, or it was not to be had: error 91

  // `hidden` and `shown` as in LoadTickers.
  void Columns(std::string& hidden, std::string& shown);
  void Headers(const std::string& last, std::string& hidden, std::string& shown);
  void TickerRows();
  // `status`: what the table says of the way in which it is brought up to date; empty for nothing.
  void Mode(const std::string& status);
};

void frmMirelo::LoadTickers(std::string& hidden, std::string& shown) {
  Routine("Mirelo.frmMirelo.LoadTickers", [&](Frame& frame) {
    std::string status;
    std::shared_ptr<Worksheet> table;
    bool found = false;
    for (const std::int32_t i : frame.loop([&] { return Bounds{1, Worksheets()->Count()}; })) {
      if (frame.test([&] { return Worksheets()->Item(i)->Name() == kQuoteTable; })) {
        STEP(table = Worksheets()->Item(i));
        STEP(status = TextOf(*Referred(table.get()).Range(kStatusCell)));
        found = true;
        break;
      }
    }

    TableReading reading{frame, *this, table.get()};
    if (!found) {
      STEP(shown = NullDublicatForListRight(shown));
      STEP(VerticalFields_ = GiveListVerticFields(shown));
      STEP(AddListQuoteSource(""));
    } else if (frame.test([&] { return EndOfTickers(table.get()) < kFootOfSheet; })) {
      reading.Columns(hidden, shown);
      reading.TickerRows();
    }
    reading.Mode(status);
    frame.pop();
  });
}

void frmMirelo::TableReading::Columns(std::string& hidden, std::string& shown) {
  std::string last;
  STEP(last = Referred(table).Range(kFirstHeader)->End(host::excel::xlToRight)->Address(false, false));
  if (frame.test([&] { return !EqualText(last, kFirstHeader); })) {
    Headers(last, hidden, shown);
  } else {
    STEP(shown = NullDublicatForListRight(shown));
    STEP(form.VerticalFields_ = GiveListVerticFields(shown));
  }
}

void frmMirelo::TableReading::Headers(const std::string& last, std::string& hidden, std::string& shown) {
  std::vector<std::string> absent;  // all columns; those that the table shows become empty
  absent.reserve(kColumnVocabulary.size());
  for (const ColumnRow& column : kColumnVocabulary) absent.emplace_back(column.name);

  Variant headers;
  STEP(form.PrevColumnCount_ = 0);
  STEP(headers = Referred(table).Range(std::string(kFirstHeader) + ":" + last)->Value());
  STEP(shown.clear());
  for (const std::int32_t col : frame.loop([&] {
         const VariantArray& row = headers.AsArray();
         return Bounds{row.LBound(2), row.UBound(2)};
       })) {
    std::string name;
    if (!frame.test([&] {
          name = TextOf(std::as_const(headers).AsArray()(1, col));
          return CheckFieldHeaderTable(name);
        })) {
      continue;
    }
    STEP(form.PrevColumnCount_ = static_cast<std::int16_t>(form.PrevColumnCount_ + 1));
    STEP(AppendName(shown, name));
    for (std::string& column : absent) {
      if (frame.test([&] { return EqualText(column, name); })) {
        STEP(column.clear());
        break;
      }
    }
  }
  STEP(CutLastComma(shown));
  STEP(shown = NullDublicatForListRight(shown));
  STEP(form.VerticalFields_ = GiveListVerticFields(shown));

  STEP(hidden.clear());
  for (const std::string& column : absent) {
    if (!column.empty()) STEP(AppendName(hidden, column));
  }
  STEP(CutLastComma(hidden));
}

void frmMirelo::TableReading::TickerRows() {
  std::int32_t unused = 0;
  for (const std::int32_t row : frame.loop([&] { return Bounds{kFirstTickerRow, EndOfTickers(table)}; })) {
    const auto ticker = [&] { return TextOf(*Referred(table).Cells(row, 1)); };
    if (frame.test([&] { return Len(ticker()) <= kLongestTicker; })) {
      STEP(form.AddTicker(UCase(ticker()), unused));
    }
  }
}

void frmMirelo::TableReading::Mode(const std::string& status) {
  if (status.empty()) return;
  std::int32_t opening = 0;
  std::int32_t closing = 0;
  STEP(opening = InStr(1, status, "(", Compare::Text));
  STEP(closing = InStrRev(status, ")", Compare::Text));
  if (opening < 1) return;

  const std::string mode(Left(status, opening - 1));
  std::string how;
  // Without a closing bracket the length is negative, which is an error of its own.
  const auto between = [&] { return std::string(Mid(status, opening + 1, closing - opening - 1)); };
  if (mode == kSnapshotMode) {
    std::int32_t unit = 0;
    STEP(how = between());
    STEP(unit = InStr(1, how, kSecondsUnit, Compare::Text));
    if (unit >= 1) {
      STEP(form.txtSec.Text(NumberText(RoundToInt16(Val(Left(how, unit - 1))))));
    } else if (how.find(kUpdateOnce) == std::string::npos) {
      // A table that was updated once leaves the box as the settings say.
      STEP(form.chkUpdOrNot.Value(0));
    }
  } else if (mode == kStreamingMode) {
    STEP(how = Trim(between()));
    STEP(form.txtSec.Text("0"));
    STEP(form.AddListQuoteSource(how));
  }
}

}  // namespace mirelo
