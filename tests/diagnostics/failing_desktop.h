#pragma once

#include <string>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"
#include "support/scripted_desktop.h"

namespace mirelo::testing {

// A desktop that fails at the calls that a test has chosen, and keeps a list of all calls that the error
// dialog makes.
class FailingDesktop : public ScriptedDesktop {
 public:
  std::vector<std::string> failing;  // names of calls
  std::vector<std::string> calls;    // with arguments, oldest first

  void Beep() override {
    Call("Beep");
    ScriptedDesktop::Beep();
  }
  void SetForegroundWindow(forms::Form& form) override {
    Call("SetForegroundWindow");
    ScriptedDesktop::SetForegroundWindow(form);
  }
  int ShellExecuteA(const std::string& verb, const std::string& file) override {
    Call("ShellExecuteA", " " + verb + " " + file);
    return ScriptedDesktop::ShellExecuteA(verb, file);
  }

 private:
  void Call(const std::string& name, const std::string& arguments = "") {
    calls.push_back(name + arguments);
    for (const std::string& fails : failing) {
      if (fails == name) throw Errors::OutOfMemory();
    }
  }
};

}  // namespace mirelo::testing
