#pragma once

#include <atomic>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <com/sun/star/util/XModifyListener.hpp>
#include <memory>
#include <optional>
#include <string>

#include "app/stream_watch.h"
#include "automation/event.h"
#include "day/last_told.h"
#include "day/working_day.h"

namespace mirelo::libreoffice {

namespace css = com::sun::star;

class Machine;

// The working day in an open document.
class DocumentDay {
 public:
  using Context = css::uno::Reference<css::uno::XComponentContext>;
  using Document = css::uno::Reference<css::frame::XModel>;

  // The machine must outlive the day. Error 5 for a document that is no spreadsheet.
  DocumentDay(Machine& machine, const Context& context, const Document& document);
  ~DocumentDay();
  DocumentDay(const DocumentDay&) = delete;
  DocumentDay& operator=(const DocumentDay&) = delete;

  // Begins as the settings say. Raises what WorkingDay::Start raises.
  void Start();

  const Document& document() const { return document_; }
  day::WorkingDay& day() { return day_; }
  const day::LastTold& Told() const { return told_; }
  // Whether QuoteTracker was found not to be what answers, before any quote came: none will. The reason was
  // told.
  bool IsInVain() const { return watch_ && watch_->HasFoundAnother() && day_.Came().Count() == 0; }
  // A line for a person: from the day, or about what stands in its way.
  Event<const std::string&> Status;
  // Whether a call of its own waits for quotes.
  bool IsAsking() const { return asks_at_.has_value(); }
  // Whether what is shown now comes from the day's own asking for quotes, and not from what somebody does
  // while that waits.
  bool Speaks() const;
  // The document is being closed. It must not be asked for anything any more. Raised on the thread of whoever
  // closes it.
  Event<>& Closing() { return *closing_; }
  // It is, or was.
  bool IsClosed() const { return *is_closed_; }

 private:
  class Changes;

  void OnWrote();
  void Explain(const std::string& text);

  Machine& machine_;
  Document document_;
  std::shared_ptr<Event<>> closing_ = std::make_shared<Event<>>();  // the document's, too
  std::shared_ptr<std::atomic<bool>> is_closed_ = std::make_shared<std::atomic<bool>>(false);
  day::LastTold told_;
  day::WorkingDay day_;
  std::optional<app::StreamWatch> watch_;
  bool is_fitted_ = false;
  std::optional<int> asks_at_;  // the loop's depth, while the day asks
  css::uno::Reference<css::util::XModifyListener> changes_;
  Event<const std::string&>::Cookie told_by_machine_ = 0;
};

// What a document is called for people: its title, as in the window's.
std::string TitleOf(const css::uno::Reference<css::frame::XModel>& document);

}  // namespace mirelo::libreoffice
