// The number boxes and their scroll bars, which are kept in step while the person types, and the name of the
// vertical sheets. Setting a text or a bar raises the other's handler again; they agree at once.

#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/number.h"
#include "automation/text.h"
#include "automation/variant.h"
#include "core/message_box.h"
#include "diagnostics/routine.h"
#include "diagnostics/skipping_frame.h"
#include "dialog/frmMirelo.h"
#include "dialog/sheet_names.h"
#include "host/desktop.h"

namespace mirelo {

namespace {

constexpr std::string_view kSampleNumber = "2.1234567890";

std::int16_t NumberOf(const forms::TextBox& box) { return Variant(box.Text()).ToInt16(); }

// Holds the text inside the bar's range and moves the bar. False when the text is no number: it stays as it
// is then, and so does the routine's name on the call stack.
//
// A number that 16 bits cannot hold fails unseen and counts as 0, so that its text stays as well.
bool TakeNumber(Frame& frame, forms::TextBox& box, forms::ScrollBar& bar) {
  if (!IsNumeric(box.Text())) {
    STEP(ShowMessage("The value must be a digit.", host::Desktop::kCritical));
    STEP(box.SetFocus());
    return false;
  }
  frame.ignore_failures();
  std::int16_t number = 0;
  STEP(number = NumberOf(box));
  if (bar.Max() > number) STEP(box.Text(NumberText(bar.Max())));
  if (bar.Min() < number) STEP(box.Text(NumberText(bar.Min())));
  STEP(bar.Value(NumberOf(box)));
  return true;
}

// Whether the text is a number between whole ones, and this the one that it rounds to.
bool IsFractionNear(std::int32_t whole, std::string_view text) {
  const std::optional<double> number = ParseNumber(text);
  return number && *number != whole && std::nearbyint(*number) == whole;
}

// A fraction is what the person typed while the bar followed, and stays.
void ShowNumber(Frame& frame, const forms::ScrollBar& bar, forms::TextBox& box) {
  frame.ignore_failures();
  if (!IsFractionNear(bar.Value(), box.Text())) STEP(box.Text(NumberText(bar.Value())));
  frame.pop();
}

// The sample with so many decimal places.
std::string_view Sample(std::int16_t places) { return Left(kSampleNumber, places == 0 ? 1 : places + 2); }

}  // namespace

void frmMirelo::txtChartPoints_Change() {
  Routine("Mirelo.frmMirelo.txtChartPoints_Change", [&](Frame& frame) {
    if (TakeNumber(frame, txtChartPoints, VScrollChartPoints)) frame.pop();
  });
}

void frmMirelo::VScrollChartPoints_Change() {
  Routine("Mirelo.frmMirelo.VScrollChartPoints_Change",
          [&](Frame& frame) { ShowNumber(frame, VScrollChartPoints, txtChartPoints); });
}

void frmMirelo::txtDecimalPlaces_Change() {
  Routine("Mirelo.frmMirelo.txtDecimalPlaces_Change", [&](Frame& frame) {
    if (!TakeNumber(frame, txtDecimalPlaces, VScrollDecimalplaces)) return;
    std::int16_t places = 0;
    STEP(places = NumberOf(txtDecimalPlaces));
    STEP(lblExample.Caption(std::string(Sample(places))));
    STEP(C1ElaSettings.Refresh());
    frame.pop();
  });
}

void frmMirelo::VScrollDecimalplaces_Change() {
  Routine("Mirelo.frmMirelo.VScrollDecimalplaces_Change",
          [&](Frame& frame) { ShowNumber(frame, VScrollDecimalplaces, txtDecimalPlaces); });
}

void frmMirelo::txtRows_Change() {
  Routine("Mirelo.frmMirelo.txtRows_Change", [&](Frame& frame) {
    if (TakeNumber(frame, txtRows, VScrollRows)) frame.pop();
  });
}

void frmMirelo::VScrollRows_Change() {
  Routine("Mirelo.frmMirelo.VScrollRows_Change",
          [&](Frame& frame) { ShowNumber(frame, VScrollRows, txtRows); });
}

// No pause between updates means that quotes are streamed, from the source that is chosen then.
void frmMirelo::txtSec_Change() {
  Routine("Mirelo.frmMirelo.txtSec_Change", [&](Frame& frame) {
    if (!TakeNumber(frame, txtSec, VScrollSec)) return;
    if (ParseNumber(txtSec.Text()) == 0.0) {
      STEP(ComQuoteSource.Enabled(true));
      STEP(ButUpDate.Enabled(true));
      if (ComQuoteSource.ListCount() == 0) STEP(AddListQuoteSource("False"));  // no source has this name
    } else {
      STEP(ComQuoteSource.Enabled(false));
      STEP(ButUpDate.Enabled(false));
    }
    frame.pop();
  });
}

void frmMirelo::VScrollSec_Change() {
  Routine("Mirelo.frmMirelo.VScrollSec_Change", [&](Frame& frame) { ShowNumber(frame, VScrollSec, txtSec); });
}

void frmMirelo::txtVerticalSheet_Change() {
  SkippingFailures([&](SkippingFrame& frame) {
    Variant name;
    STEP(name = txtVerticalSheet.Text());
    STEP(txtVerticalSheet.Text(RemoveBadSymbols(name, std::string(kNotInSheetNames)).ToText()));
    STEP(lblExampleSheet.Caption(std::string(Trim(txtVerticalSheet.Text())) + "(Ticker)"));
  });
}

}  // namespace mirelo
