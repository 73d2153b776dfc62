#pragma once

#include "adapters/windows/views/native.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "adapters/windows/views/painted_window.h"
#include "adapters/windows/views/views.h"
#include "forms/simple_controls.h"

namespace mirelo::windows {

// A label that can be clicked: a field of its colour, which the keyboard reaches as well. The blank key
// clicks it, and so does Enter, once the person has said yes to the question.
class Field final : public PaintedWindow {
 public:
  Field(forms::Label& label, Views& views, std::string asks)
      : label_(label), views_(views), asks_(std::move(asks)) {}

  std::optional<LRESULT> Handle(UINT message, WPARAM first, LPARAM second) override;
  // Enter and the arrow keys.
  bool TakeKey(WPARAM key);
  // The fields that the arrow keys lead to from here; null for none.
  struct Neighbours {
    forms::Control* above = nullptr;
    forms::Control* below = nullptr;
    forms::Control* left = nullptr;
    forms::Control* right = nullptr;
  };
  void Beside(const Neighbours& neighbours) { neighbours_ = neighbours; }

 private:
  void Paint() const;
  void Click();
  void Release(LPARAM place);

  forms::Label& label_;
  Views& views_;
  std::string asks_;
  Neighbours neighbours_;
  bool pressed_ = false;
};

}  // namespace mirelo::windows
