#include "adapters/headless/console_desktop.h"

#include <iostream>
#include <string_view>
#include <utility>

namespace mirelo::headless {

namespace {

using Answer = host::Desktop::Answer;

constexpr int kButtons = 0x0F;  // the part of a style that names the buttons
constexpr int kIcon = 0xF0;     // and the one that names the icon

std::string_view IconWord(int style) {
  switch (style & kIcon) {
    case host::Desktop::kCritical:
      return "error: ";
    case host::Desktop::kExclamation:
      return "warning: ";
    case host::Desktop::kInformation:
      return "information: ";
    default:
      return (style & kButtons) == host::Desktop::kOkOnly ? "message: " : "question: ";
  }
}

std::string_view AnswerWord(Answer answer) {
  switch (answer) {
    case Answer::Ok:
      return "OK";
    case Answer::Cancel:
      return "Cancel";
    case Answer::Abort:
      return "Abort";
    case Answer::Retry:
      return "Retry";
    case Answer::Ignore:
      return "Ignore";
    case Answer::Yes:
      return "Yes";
    case Answer::No:
      return "No";
  }
  return "";
}

Answer AnswerOfNobody(int style) {
  switch (style & kButtons) {
    case host::Desktop::kAbortRetryIgnore:
      return Answer::Abort;
    case host::Desktop::kYesNo:
      return Answer::No;
    default:
      return Answer::Ok;
  }
}

template <class Value>
Value TakeFirst(std::deque<Value>& script, Value otherwise) {
  if (script.empty()) return otherwise;
  Value first = std::move(script.front());
  script.pop_front();
  return first;
}

// Lines may end in CR LF or LF; those behind the first are indented, so that they are seen to belong to it.
void PrintIndented(std::ostream& out, std::string_view text) {
  for (const char c : text) {
    if (c == '\n') {
      out << "\n  ";
    } else if (c != '\r') {
      out << c;
    }
  }
  out << '\n';
}

}  // namespace

ConsoleDesktop::ConsoleDesktop() : ConsoleDesktop(std::cerr) {}

ConsoleDesktop::ConsoleDesktop(std::ostream& out, Script script) : out_(out), script_(std::move(script)) {}

Answer ConsoleDesktop::MessageBox(const std::string& text, int style, const std::string& title) {
  out_ << IconWord(style);
  if (!title.empty()) out_ << title << ": ";
  PrintIndented(out_, text);
  const Answer answer = TakeFirst(script_.box_answers, AnswerOfNobody(style));
  if ((style & kButtons) != kOkOnly) out_ << "  answered: " << AnswerWord(answer) << '\n';
  out_.flush();
  return answer;
}

std::string ConsoleDesktop::ShowErrorReport(const std::string& report, const std::string& /*support_mail*/) {
  out_ << "error: ";
  PrintIndented(out_, report);
  std::string answer = TakeFirst(script_.report_answers, std::string("ABORT"));
  out_ << "  answered: " << answer << std::endl;
  return answer;
}

}  // namespace mirelo::headless
