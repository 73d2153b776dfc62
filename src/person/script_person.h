#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/desktop.h"
#include "person/attended_desktop.h"
#include "person/attending_desktop.h"
#include "person/dialog_person.h"
#include "person/dialog_wishes.h"
#include "terminal/output.h"

namespace mirelo {

// Stands in for a person where a script runs that nobody sees: at night, as a service. Nothing is shown; what
// would be is kept as text. Questions get the answer of least consequence, reports of failures "Abort". The
// settings dialog is filled in as was wished, and Go is pressed; where a wish cannot be fulfilled, or the
// dialog reports a failure, or Go would take something away from the workbook, it is
// cancelled, and the text says why.
class ScriptPerson {
 public:
  // A wish of the next settings dialogs: "Tickers", "Columns", "History" (fields; "" for the usual ones),
  // each joined by commas, "Charts" (1 or 0), "AcceptCosts" (1: Go is pressed although it takes something
  // away from the workbook), or the name of a setting that the dialog has a control for. Error 5 for what is
  // none of these, or no value of it.
  void Wish(const std::string& name, const std::string& value);

  // What has been told since the last call.
  std::string Told();

  host::Desktop& desktop() { return attended_; }

 private:
  bool AcceptsCosts(const std::vector<std::string>& costs);

  class Text : public terminal::Output {
   public:
    std::string Take() { return std::exchange(text_, {}); }

   private:
    void Put(std::string_view bytes) override { text_ += bytes; }
    std::string text_;
  };

  Text told_;
  DialogWishes wishes_;
  AttendedDesktop desktop_{told_};
  AttendingDesktop attended_{desktop_, {nullptr, [this](const auto& costs) { return AcceptsCosts(costs); }}};
  DialogPerson person_{wishes_, desktop_, kAsNames};
};

}  // namespace mirelo
