#include "libreoffice/document_day.h"

#include <chrono>
#include <com/sun/star/frame/XTitle.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/util/XModifyBroadcaster.hpp>
#include <cppuhelper/implbase1.hxx>
#include <exception>
#include <string>

#include "adapters/calc/objects/spreadsheet_program.h"
#include "automation/runtime_error.h"
#include "host/excel/application.h"
#include "libreoffice/machine.h"
#include "uno/errors.h"
#include "uno/text.h"
#include "wire/mended_replies.h"
#include "worksheet/quote_table.h"

namespace mirelo::libreoffice {

namespace {

// A person's step is to wait for quotes no longer than 50 ms. This is of the processor's time, and after it
// the office brings its windows up to date.
constexpr std::chrono::milliseconds kHold{15};

using css::uno::Reference;

Reference<css::sheet::XSpreadsheetDocument> SpreadsheetIn(const DocumentDay::Document& document) {
  const Reference<css::sheet::XSpreadsheetDocument> spreadsheet(document, css::uno::UNO_QUERY);
  if (!spreadsheet.is()) throw RuntimeError(5, "Quotes come into spreadsheets only.");
  return spreadsheet;
}

void RequireQuoteTable(const DocumentDay::Document& document) {
  if (SpreadsheetIn(document)->getSheets()->hasByName(uno::OfficeText(kQuoteTable))) return;
  throw RuntimeError(9, "This document has no quote table, which is its sheet " + std::string(kQuoteTable) +
                            ". Choose Settings..., where Go builds one; then press Start.");
}

}  // namespace

// Hears whatever is changed in the document: by a person, by macros, and by the day itself.
class DocumentDay::Changes final : public cppu::WeakImplHelper1<css::util::XModifyListener> {
 public:
  explicit Changes(day::WorkingDay& day) : day_(&day) {}

  void Leave() { day_ = nullptr; }

  void SAL_CALL modified(const css::lang::EventObject&) override {
    uno::AtTheBorder([&] {
      if (day_ != nullptr) day_->LookAgain();
    });
  }
  void SAL_CALL disposing(const css::lang::EventObject&) override { day_ = nullptr; }

 private:
  day::WorkingDay* day_;
};

DocumentDay::DocumentDay(Machine& machine, const Context& context, const Document& document)
    : machine_(machine),
      document_(document),
      day_(machine.host().loop(), machine.host().observed_sockets(), machine.replies(),
           calc::ApplicationOf(context, SpreadsheetIn(document_),
                               [closing = closing_, is_closed = is_closed_] {
                                 *is_closed = true;
                                 closing->Raise();
                               })) {
  day_.HoldAtMost(kHold);
  day_.Status.Subscribe([this](const std::string& text) {
    told_.Tell(text, day_.Came().Count());
    Status.Raise(text);
  });
  day_.LoginRefused.Subscribe([this](const std::string& text) { told_.Explain(text, day_.Came().Count()); });
  day_.Wrote.Subscribe([this] { OnWrote(); });
  day_.Asks.Subscribe([this] { asks_at_ = machine_.loop().Depth(); });
  day_.Asked.Subscribe([this] { asks_at_.reset(); });
  changes_ = new Changes(day_);
  Reference<css::util::XModifyBroadcaster>(document_, css::uno::UNO_QUERY_THROW)->addModifyListener(changes_);
  told_by_machine_ =
      machine_.Told.Subscribe([this](const std::string& text) { told_.Tell(text, day_.Came().Count()); });
}

DocumentDay::~DocumentDay() {
  machine_.Told.Unsubscribe(told_by_machine_);
  if (!changes_.is()) return;
  static_cast<Changes&>(*changes_).Leave();
  try {
    Reference<css::util::XModifyBroadcaster>(document_, css::uno::UNO_QUERY_THROW)
        ->removeModifyListener(changes_);
  } catch (const css::uno::RuntimeException&) {  // it was closed
  }
}

void DocumentDay::Start() {
  RequireQuoteTable(document_);
  day_.TakeSettings();
  watch_.emplace(machine_.host());
  watch_->Told.Subscribe([this](const std::string& text) { Explain(text); });
  day_.Start();
}

bool DocumentDay::Speaks() const { return asks_at_ == machine_.loop().Depth(); }

void DocumentDay::Explain(const std::string& text) {
  told_.Explain(text, day_.Came().Count());
  Status.Raise(text);
  if (IsInVain()) day_.TakeFailure(std::make_exception_ptr(RuntimeError(5, text)));
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
