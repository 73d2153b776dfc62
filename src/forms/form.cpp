#include "forms/form.h"

#include <algorithm>
#include <utility>

#include "forms/button.h"
#include "forms/control.h"

namespace mirelo::forms {

namespace {

std::vector<Form*> modal_forms;

// Keeps the stack of modal forms right whichever way the show ends.
class OnTop {
 public:
  explicit OnTop(Form& form) { modal_forms.push_back(&form); }
  ~OnTop() { modal_forms.pop_back(); }
  OnTop(const OnTop&) = delete;
  OnTop& operator=(const OnTop&) = delete;
};

template <class Wanted>
Button* FindButton(const std::vector<Control*>& controls, Wanted wanted) {
  for (auto* control : controls) {
    auto* button = dynamic_cast<Button*>(control);
    if (button != nullptr && wanted(*button)) return button;
  }
  return nullptr;
}

}  // namespace

Form::Form(std::string name, std::string caption) : name_(std::move(name)), caption_(std::move(caption)) {}

void Form::Caption(std::string caption) {
  caption_ = std::move(caption);
  Appearance.Raise();
}

void Form::WindowState(State state) {
  state_ = state;
  Appearance.Raise();
}

Control* Form::Find(std::string_view name) const {
  const auto control =
      std::find_if(controls_.begin(), controls_.end(), [&](const Control* c) { return c->Name() == name; });
  return control == controls_.end() ? nullptr : *control;
}

void Form::ActiveControl(Control* control) {
  active_ = control;
  Appearance.Raise();
}

Button* Form::DefaultButton() const {
  return FindButton(controls_, [](const Button& button) { return button.Default(); });
}

Button* Form::CancelButton() const {
  return FindButton(controls_, [](const Button& button) { return button.Cancel(); });
}

void Form::Load() {
  if (std::exchange(loaded_, true)) return;
  Form_Load();
}

void Form::Show() {
  visible_ = true;
  Appearance.Raise();
}

void Form::Hide() {
  visible_ = false;
  Appearance.Raise();
}

void Form::Activate() {
  if (activating_) return;
  activating_ = true;
  try {
    Form_Activate();
  } catch (...) {
    activating_ = false;
    throw;
  }
  activating_ = false;
}

void Form::Close() {
  Form_Unload();
  tag_.clear();
  loaded_ = false;
  Hide();
}

void Form::UserEnter() {
  auto* button = dynamic_cast<Button*>(active_);
  if (button == nullptr || !button->IsUsable()) button = DefaultButton();
  if (button != nullptr) button->UserPress();
}

void Form::UserEscape() {
  if (auto* button = CancelButton()) button->UserPress();
}

void Form::Design(std::int32_t width, std::int32_t height, Border border) {
  width_ = width;
  height_ = height;
  border_ = border;
}

void ShowModal(Form& form, const std::function<void(const std::function<bool()>& done)>& run) {
  form.Load();
  try {
    const OnTop on_top(form);
    form.Show();
    form.Activate();
    run([&form] { return !form.Visible(); });
  } catch (...) {
    form.Hide();
    throw;
  }
  auto* below = ActiveForm();
  if (below != nullptr && below->Visible()) below->Activate();
}

Form* ActiveForm() { return modal_forms.empty() ? nullptr : modal_forms.back(); }

}  // namespace mirelo::forms
