#include "support/scripted_desktop.h"

#include <ostream>
#include <utility>

#include "automation/text.h"
#include "forms/button.h"
#include "forms/form.h"
#include "forms/text_box.h"

namespace mirelo::testing {

namespace {

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
  const Answer answer = TakeFirst(answers, MostCarefulAnswer(style));
  if (while_open) while_open();
  return answer;
}

void ScriptedDesktop::ShowModal(forms::Form& form) {
  forms::ShowModal(form, [&](const std::function<bool()>& ended) {
    if (form.Name() == "frmErrorMessage") {
      AnswerReport(form);
    } else {
      forms.push_back(form.Name());
      const auto acts = person.find(form.Name());
      if (acts != person.end()) acts->second(form);
    }
    if (!ended()) form.Close();
  });
}

void ScriptedDesktop::AnswerReport(forms::Form& form) {
  const auto& box = dynamic_cast<forms::TextBox&>(*form.Find("txtErrorMessage"));
  reports.push_back({box.Text(), form.Find("btnSend")->Enabled()});
  const std::string answer = TakeFirst(report_answers, std::string("ABORT"));
  if (while_open) while_open();
  if (answer.empty()) return;
  for (auto* control : form.Controls()) {
    auto* button = dynamic_cast<forms::Button*>(control);
    if (button != nullptr && UCase(button->Caption()) == answer) return button->UserPress();
  }
  form.Tag(answer);  // what no button says
  form.Hide();
}

std::optional<host::WindowPlacement> ScriptedDesktop::GetWindowPlacement(forms::Form& form) {
  const auto placement = placements.find(form.Name());
  if (placement == placements.end()) return std::nullopt;
  return placement->second;
}

bool ScriptedDesktop::SetWindowPlacement(forms::Form& form, const host::WindowPlacement& placement) {
  if (takes_placements) placements[form.Name()] = placement;
  return takes_placements;
}

int ScriptedDesktop::ShellExecuteA(const std::string& /*verb*/, const std::string& file) {
  launched.push_back(file);
  return shell_result;
}

void PrintTo(const ScriptedDesktop::Box& box, std::ostream* out) {
  *out << "[" << box.style << "] " << box.title << ": \"" << box.text << "\"";
}

}  // namespace mirelo::testing
