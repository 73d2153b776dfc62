#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/event.h"

namespace mirelo::forms {

class Button;
class Control;

// A window of controls, without a toolkit.
//
// Its life: made, loaded (Form_Load, once), shown, activated (Form_Activate, each time it becomes the
// program's active form), hidden; closed by a person it is unloaded (Form_Unload). A modal show ends when the
// form is hidden.
class Form {
 public:
  enum class Border {
    FixedSingle = 1,
    Sizable = 2,
    FixedDialog = 3,
    FixedToolWindow = 4,
    SizableToolWindow = 5
  };
  enum class State { Normal = 0, Minimized = 1, Maximized = 2 };

  Form(std::string name, std::string caption);
  virtual ~Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& Name() const { return name_; }
  const std::string& Caption() const { return caption_; }
  void Caption(std::string caption);
  // How a form passes its answer to whoever showed it.
  const std::string& Tag() const { return tag_; }
  void Tag(std::string tag) { tag_ = std::move(tag); }

  Border BorderStyle() const { return border_; }
  State WindowState() const { return state_; }
  void WindowState(State state);
  // Client size in twips (1440 an inch) as designed; a view may need more.
  std::int32_t Width() const { return width_; }
  std::int32_t Height() const { return height_; }

  // In tab order.
  const std::vector<Control*>& Controls() const { return controls_; }
  // Null when the form has no control of that name.
  Control* Find(std::string_view name) const;
  // Null at first.
  Control* ActiveControl() const { return active_; }
  void ActiveControl(Control* control);
  // Null when the form has none.
  Button* DefaultButton() const;
  Button* CancelButton() const;

  bool Visible() const { return visible_; }

  // Runs Form_Load the first time; nothing afterwards.
  void Load();
  void Show();
  void Hide();
  // Runs Form_Activate, unless it is running already: a form that something is shown over while it is being
  // activated goes on with that activation.
  void Activate();
  // The person closes the window: Form_Unload, then the form is hidden and its tag is empty again, as a
  // form's is that was never shown.
  void Close();

  // What the keys do. Enter presses the button that has the focus, else the default button; Escape presses
  // the cancel button. Nothing happens when that button cannot be used.
  void UserEnter();
  void UserEscape();

  // Handlers of the form's own life.
  virtual void Form_Load() {}
  virtual void Form_Activate() {}
  virtual void Form_Unload() {}

  // Raised when caption, window state, visibility or focus change. For views.
  Event<> Appearance;

 protected:
  void Design(std::int32_t width, std::int32_t height, Border border);

 private:
  friend class Control;
  void Register(Control& control) { controls_.push_back(&control); }

  std::string name_;
  std::string caption_;
  std::string tag_;
  Border border_ = Border::Sizable;
  State state_ = State::Normal;
  std::int32_t width_ = 4800;
  std::int32_t height_ = 3600;
  std::vector<Control*> controls_;
  Control* active_ = nullptr;
  bool loaded_ = false;
  bool visible_ = false;
  bool activating_ = false;
};

// Shows a form modally: loads, shows and activates it, lets `run` run until its argument answers true (the
// form was hidden), and activates the form below again if it is still shown. `run` is the message loop's
// RunUntil. A failure on the way hides the form and is raised; the form below is not activated then.
void ShowModal(Form& form, const std::function<void(const std::function<bool()>& done)>& run);

// The modal form on top; null when none shows.
Form* ActiveForm();

}  // namespace mirelo::forms
