#include "support/scripted_desktop.h"

#include <ostream>
#include <utility>

namespace mirelo::testing {

namespace {

host::Desktop::Answer DefaultAnswer(int style) {
  switch (style & 0xF) {
    case host::Desktop::kAbortRetryIgnore:
      return host::Desktop::Answer::Abort;
    case host::Desktop::kYesNo:
      return host::Desktop::Answer::No;
    default:
      return host::Desktop::Answer::Ok;
  }
}

template <class Value>
Value TakeFirst(std::deque<Value>& queue, Value otherwise) {
  if (queue.empty()) return otherwise;
  Value first = std::move(queue.front());
  queue.pop_front();
  return first;
}

}  // namespace

host::Desktop::Answer ScriptedDesktop::MessageBox(const std::string& text, int style,
                                                  const std::string& title) {
  boxes.push_back({text, style, title});
  const Answer answer = TakeFirst(answers, DefaultAnswer(style));
  if (while_open) while_open();
  return answer;
}

std::string ScriptedDesktop::ShowErrorReport(const std::string& report, const std::string& support_mail) {
  reports.push_back({report, support_mail});
  const std::string answer = TakeFirst(report_answers, std::string("ABORT"));
  if (while_open) while_open();
  return answer;
}

void PrintTo(const ScriptedDesktop::Box& box, std::ostream* out) {
  *out << "[" << box.style << "] " << box.title << ": \"" << box.text << "\"";
}

}  // namespace mirelo::testing
