#include "libreoffice/document_day.h"

#include <com/sun/star/frame/XTitle.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <utility>

#include "adapters/calc/objects/spreadsheet_program.h"
#include "automation/runtime_error.h"
#include "host/excel/application.h"
#include "libreoffice/machine.h"
#include "uno/text.h"
#include "wire/mended_replies.h"

namespace mirelo::libreoffice {

namespace {

using css::uno::Reference;

Reference<css::sheet::XSpreadsheetDocument> SpreadsheetIn(const DocumentDay::Document& document) {
  const Reference<css::sheet::XSpreadsheetDocument> spreadsheet(document, css::uno::UNO_QUERY);
  if (!spreadsheet.is()) throw RuntimeError(5, "Quotes come into spreadsheets only.");
  return spreadsheet;
}

}  // namespace

DocumentDay::DocumentDay(Machine& machine, const Context& context, Document document)
    : machine_(machine),
      document_(std::move(document)),
      day_(machine.host().loop(), machine.host().sockets(), machine.replies(),
           calc::ApplicationOf(context, SpreadsheetIn(document_),
                               [closing = closing_] { closing->Raise(); })) {
  day_.Status.Subscribe([this](const std::string& text) { told_ = text; });
  day_.Wrote.Subscribe([this] { OnWrote(); });
  told_by_machine_ = machine_.Told.Subscribe([this](const std::string& text) { told_ = text; });
}

DocumentDay::~DocumentDay() { machine_.Told.Unsubscribe(told_by_machine_); }

void DocumentDay::Start() {
  day_.TakeSettings();
  day_.Start();
}

// Once is enough for what quotes hold, and from then on the widths are the person's.
void DocumentDay::OnWrote() {
  if (is_fitted_ || day_.Came().Count() == 0) return;
  is_fitted_ = true;
  day_.Fit();
}

std::string TitleOf(const Reference<css::frame::XModel>& document) try {
  const Reference<css::frame::XTitle> titled(document, css::uno::UNO_QUERY);
  return titled.is() ? uno::TextOf(titled->getTitle()) : std::string();
} catch (const css::uno::RuntimeException&) {
  return {};
}

}  // namespace mirelo::libreoffice
