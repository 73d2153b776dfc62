#pragma once

#include "windows/views/rig.h"

#include <string>
#include <utility>
#include <vector>

#include "forms/button.h"
#include "forms/check_box.h"
#include "forms/form.h"
#include "forms/simple_controls.h"
#include "forms/text_box.h"

namespace mirelo::windows {

// A form that notes what is done to its controls.
class Sample : public forms::Form {
 public:
  Sample() : Form("Sample", "Sample") {
    ok.Click.Subscribe([this] { Note("ok"), Hide(); });
    cancel.Click.Subscribe([this] { Note("cancel"), Hide(); });
    press.Click.Subscribe([this] { Note("press"); });
    check.Click.Subscribe([this] { Note("check"); });
    text.Change.Subscribe([this] { Note("text " + text.Text()); });
    ok.Default(true);
    cancel.Cancel(true);
  }
  void Note(std::string what) { noted.push_back(std::move(what)); }

  forms::Label label{*this, "label", nullptr, "Words"};
  forms::TextBox text{*this, "text", nullptr};
  forms::CheckBox check{*this, "check", nullptr, "&Tick"};
  forms::Button press{*this, "press", nullptr, "&Press"};
  forms::Button ok{*this, "ok", nullptr, "&OK"};
  forms::Button cancel{*this, "cancel", nullptr, "&Cancel"};
  std::vector<std::string> noted;
};

class Controls : public OnTheDesktop {
 protected:
  Sample form;
};

}  // namespace mirelo::windows
