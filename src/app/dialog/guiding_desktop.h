#pragma once

#include <functional>
#include <string>
#include <utility>

#include "person/attending_desktop.h"

namespace mirelo::app {

// A desktop that adds to the system's own words what helps a person on. Behind a message that QuoteTracker
// did not answer it says why, and what to do; in a report of a failure it says why the settings could not be
// stored.
class GuidingDesktop : public AttendingDesktop {
 public:
  // `why_no_answer` makes the sentences anew for each message. With `repeats`, for boxes that a person
  // closes, each message has them; without, for lines in a terminal, only where they differ from those
  // before.
  GuidingDesktop(host::Desktop& inner, std::function<std::string()> why_no_answer, bool repeats,
                 GoGuard guard = {})
      : AttendingDesktop(inner, std::move(guard)),
        why_no_answer_(std::move(why_no_answer)),
        repeats_(repeats) {}

  Answer MessageBox(const std::string& text, int style, const std::string& title) override;
  void ShowModal(forms::Form& form) override;

 private:
  std::function<std::string()> why_no_answer_;
  bool repeats_;
  std::string told_;
};

}  // namespace mirelo::app
