#pragma once

#include <optional>
#include <string>

#include "host/desktop.h"

namespace mirelo::host {

// Passes all calls on to another desktop. Whoever changes some of them derives from it, and overrides these
// alone.
class DesktopWrapper : public Desktop {
 public:
  // `inner` must outlive this.
  explicit DesktopWrapper(Desktop& inner) : inner_(&inner) {}

  // Passes calls on to this one from now on. It must outlive this, or the next such call.
  void PassTo(Desktop& inner) { inner_ = &inner; }

  Answer MessageBox(const std::string& text, int style, const std::string& title) override {
    return inner_->MessageBox(text, style, title);
  }
  void ShowModal(forms::Form& form) override { inner_->ShowModal(form); }
  void Beep() override { inner_->Beep(); }
  void SetForegroundWindow(forms::Form& form) override { inner_->SetForegroundWindow(form); }
  std::optional<WindowPlacement> GetWindowPlacement(forms::Form& form) override {
    return inner_->GetWindowPlacement(form);
  }
  bool SetWindowPlacement(forms::Form& form, const WindowPlacement& placement) override {
    return inner_->SetWindowPlacement(form, placement);
  }
  std::optional<WindowPlacement> GetDesktopPlacement() override { return inner_->GetDesktopPlacement(); }
  int ShellExecuteA(const std::string& verb, const std::string& file) override {
    return inner_->ShellExecuteA(verb, file);
  }

 private:
  Desktop* inner_;
};

}  // namespace mirelo::host
