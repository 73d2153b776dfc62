#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/message_loop.h"
#include "libreoffice/errand/errand.h"
#include "libreoffice/errand/lines.h"
#include "person/attended_desktop.h"
#include "person/dialog_person.h"

namespace mirelo::libreoffice {

namespace css = com::sun::star;

class Machine;
class OfficeDay;
class TellingOutput;

// Runs the errand of the program that has started this office, and ends the office when it is done, or when
// the program has gone.
class ErrandRunner {
 public:
  // The line on which the program speaks. To be called before anything else of the library is used.
  static void Begin(const css::uno::Reference<css::uno::XComponentContext>& context, int line);

  ErrandRunner(const css::uno::Reference<css::uno::XComponentContext>& context, int line, Errand errand);
  ~ErrandRunner();
  ErrandRunner(const ErrandRunner&) = delete;
  ErrandRunner& operator=(const ErrandRunner&) = delete;

 private:
  void Run();
  void Open();
  bool FillDialog();
  void LeaveToPerson();
  void BeginDay();
  void Listen();
  void Finish();
  void Store();
  bool AcceptsCosts(const std::vector<std::string>& costs);
  void Tell(const std::string& text);
  void Fail(const std::string& why);
  void EndOffice();

  const css::uno::Reference<css::uno::XComponentContext> context_;
  const int socket_;
  Lines line_;
  const Errand errand_;
  Machine& machine_;
  std::unique_ptr<TellingOutput> printed_;
  AttendedDesktop attended_;
  DialogPerson person_;
  std::function<bool(const std::vector<std::string>&)> accept_costs_;  // of the person at the window
  css::uno::Reference<css::frame::XModel> document_;
  std::int64_t quotes_ = 0;
  bool has_refused_costs_ = false;
  bool is_ending_ = false;
  host::MessageLoop::Token watch_ = 0;
  host::MessageLoop::Token alarm_ = 0;
};

}  // namespace mirelo::libreoffice
