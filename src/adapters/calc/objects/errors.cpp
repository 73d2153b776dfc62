#include "adapters/calc/objects/errors.h"

#include "adapters/calc/objects/office_text.h"
#include "host/excel/constants.h"

namespace mirelo::calc {

namespace {

RuntimeError OfCalc(const std::string& why) {
  return RuntimeError(host::excel::kApplicationError, why, "Calc");
}

}  // namespace

RuntimeError DocumentGone() {
  return OfCalc("The document is no longer open in LibreOffice. Open it again to go on.");
}

RuntimeError SheetGone(const std::string& name) {
  return OfCalc("The sheet \"" + name + "\" is no longer there. Undo its deletion, or make it anew.");
}

RuntimeError SheetProtected(const std::string& name) {
  return OfCalc("The sheet \"" + name +
                "\" is protected. Take its protection off (Tools, Protect Sheet) to have it written.");
}

RuntimeError StructureProtected() {
  return OfCalc(
      "The document's sheets are protected. Take the protection off (Tools, Protect Spreadsheet Structure) "
      "to have sheets added or renamed.");
}

RuntimeError OnlyForReading() {
  return OfCalc("The document is open for reading only. Save it under another name, or open it for editing.");
}

// The office often says no more than in which of its sources something went wrong.
RuntimeError Failed(const css::uno::Exception& failure) {
  const std::string text = TextOf(failure.Message);
  const bool says_something = !text.empty() && !text.starts_with("at ");
  return OfCalc("LibreOffice refuses this" + (says_something ? ": " + text : std::string(".")));
}

}  // namespace mirelo::calc
