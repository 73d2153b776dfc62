#include "app/dialog/guiding_desktop.h"

#include <algorithm>
#include <array>

#include "app/failure_reason.h"
#include "snapshot/messages.h"

namespace mirelo::app {

namespace {

constexpr std::array kNoAnswer{kRetrievalError, kRunQuoteTracker, kAdjustPort};

}  // namespace

host::Desktop::Answer GuidingDesktop::MessageBox(const std::string& text, int style,
                                                 const std::string& title) {
  if (std::ranges::find(kNoAnswer, text) == kNoAnswer.end())
    return DesktopWrapper::MessageBox(text, style, title);
  const std::string why = why_no_answer_();
  const bool is_news = repeats_ || why != told_;
  told_ = why;
  return DesktopWrapper::MessageBox(is_news && !why.empty() ? text + "\n" + why : text, style, title);
}

void GuidingDesktop::ShowModal(forms::Form& form) {
  AddReason(form);
  AttendingDesktop::ShowModal(form);
}

}  // namespace mirelo::app
