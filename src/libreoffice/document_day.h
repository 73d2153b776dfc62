#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/util/XCloseListener.hpp>
#include <exception>
#include <functional>
#include <memory>
#include <string>

#include "automation/event.h"
#include "day/working_day.h"

namespace mirelo::host::excel {
class Application;
}

namespace mirelo::libreoffice {

namespace css = com::sun::star;

class Machine;

// The working day in an open document, and what becomes of the document meanwhile.
class DocumentDay {
 public:
  using Document = css::uno::Reference<css::frame::XModel>;

  // The machine must outlive the day.
  DocumentDay(Machine& machine, Document document, std::shared_ptr<host::excel::Application> application);
  ~DocumentDay();
  DocumentDay(const DocumentDay&) = delete;
  DocumentDay& operator=(const DocumentDay&) = delete;

  // Begins as the settings say. Raises what WorkingDay::Start raises.
  void Start();
  // Ends, and writes what is left. Raises what keeps it from that.
  void Stop();
  // Ends without touching the document.
  void Abandon();

  const Document& document() const { return document_; }
  day::WorkingDay& day() { return day_; }
  // What was told last.
  const std::string& Told() const { return told_; }

  // The document is about to be gone; it must not be touched any more.
  Event<> Closing;

 private:
  void OnWrote();
  void Unlisten();

  Machine& machine_;
  Document document_;
  css::uno::Reference<css::util::XCloseListener> listener_;
  day::WorkingDay day_;
  std::string told_;
  bool is_fitted_ = false;
  Event<const std::string&>::Cookie told_by_machine_ = 0;
};

// What a document is called for people: its title, as in the window's.
std::string TitleOf(const css::uno::Reference<css::frame::XModel>& document);

}  // namespace mirelo::libreoffice
