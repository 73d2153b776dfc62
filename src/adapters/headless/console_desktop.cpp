#include "adapters/headless/console_desktop.h"

#include <functional>
#include <string_view>
#include <utility>

#include "forms/button.h"
#include "forms/form.h"
#include "forms/text_box.h"

namespace mirelo::headless {

namespace {

using Answer = host::Desktop::Answer;

std::string_view IconWord(int style) {
  switch (host::Desktop::IconOf(style)) {
    case host::Desktop::kCritical:
      return "error: ";
    case host::Desktop::kExclamation:
      return "warning: ";
    case host::Desktop::kInformation:
      return "information: ";
    default:
      return host::Desktop::ButtonsOf(style) == host::Desktop::kOkOnly ? "message: " : "question: ";
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

template <class Value>
Value TakeFirst(std::deque<Value>& script, Value otherwise) {
  if (script.empty()) return otherwise;
  Value first = std::move(script.front());
  script.pop_front();
  return first;
}

// Null when there is none, or none with a caption when none is asked for.
forms::Button* FindButton(const forms::Form& form, const std::string& caption) {
  if (caption.empty()) return nullptr;
  for (forms::Control* control : form.Controls()) {
    auto* button = dynamic_cast<forms::Button*>(control);
    if (button != nullptr && button->Caption() == caption) return button;
  }
  return nullptr;
}

}  // namespace

ConsoleDesktop::ConsoleDesktop(terminal::Output& out, Script script)
    : out_(out), script_(std::move(script)) {}

Answer ConsoleDesktop::MessageBox(const std::string& text, int style, const std::string& title) {
  out_ << IconWord(style);
  if (!title.empty()) out_ << title << ": ";
  out_ << terminal::Indented(text) << "\n";
  const Answer answer = TakeFirst(script_.box_answers, MostCarefulAnswer(style));
  if (ButtonsOf(style) != kOkOnly) out_ << "  answered: " << AnswerWord(answer) << "\n";
  out_.Flush();
  return answer;
}

void ConsoleDesktop::ShowModal(forms::Form& form) {
  forms::ShowModal(form, [&](const std::function<bool()>& ended) {
    out_ << "form: " << form.Caption() << "\n";
    for (const forms::Control* control : form.Controls()) {
      const auto* box = dynamic_cast<const forms::TextBox*>(control);
      if (box != nullptr && box->MultiLine()) out_ << "  " << terminal::Indented(box->Text()) << "\n";
    }
    Press(form);
    out_.Flush();
    if (!ended()) form.Close();
  });
}

void ConsoleDesktop::Press(forms::Form& form) {
  const std::optional<std::string> scripted =
      script_.pressed.empty() ? std::nullopt : std::optional(TakeFirst(script_.pressed, std::string()));
  forms::Button* button = FindButton(form, scripted.value_or("Abort"));
  if (button == nullptr && !scripted) button = form.CancelButton();
  if (button == nullptr) {
    out_ << "  closed\n";
    return form.Close();
  }
  out_ << "  pressed: " << button->Caption() << "\n";
  button->UserPress();
}

int ConsoleDesktop::ShellExecuteA(const std::string& verb, const std::string& file) {
  out_ << verb << ": " << file << "\n";
  out_.Flush();
  return kShellStarted;
}

}  // namespace mirelo::headless
