#include "forms/layout/panel.h"

#include <algorithm>
#include <utility>

#include "forms/control.h"
#include "forms/scroll_bar.h"
#include "forms/text_box.h"

namespace mirelo::forms::layout {

namespace {

bool Names(const Part& part, const std::string& control) {
  const bool leaf = part.kind == Part::Kind::Control || part.kind == Part::Kind::Spin ||
                    part.kind == Part::Kind::Swatch || part.kind == Part::Kind::Title ||
                    part.kind == Part::Kind::Unseen;
  if (leaf) return part.name == control || part.other == control;
  return std::ranges::any_of(part.parts, [&](const Part& inner) { return Names(inner, control); });
}

std::vector<Part> OneBelowTheOther(const std::vector<forms::Control*>& controls) {
  std::vector<Part> parts;
  const forms::Control* before = nullptr;
  for (const forms::Control* control : controls) {
    const auto* box = dynamic_cast<const TextBox*>(before);
    if (box != nullptr && dynamic_cast<const ScrollBar*>(control) != nullptr) {
      parts.back() = Row({Spin(box->Name(), control->Name()), Space()});
    } else {
      parts.push_back(Control(control->Name()));
    }
    before = control;
  }
  return parts;
}

}  // namespace

Part PanelOf(const FormLayout& layout, const std::string& panel,
             const std::vector<forms::Control*>& controls) {
  const auto found = layout.find(panel);
  if (found == layout.end()) return Column(OneBelowTheOther(controls));
  std::vector<forms::Control*> rest = controls;
  std::erase_if(rest, [&](const forms::Control* c) { return Names(found->second, c->Name()); });
  if (rest.empty()) return Column({Wide(found->second)});
  std::vector<Part> parts = OneBelowTheOther(rest);
  parts.insert(parts.begin(), Wide(found->second));
  return Column(std::move(parts));
}

}  // namespace mirelo::forms::layout
