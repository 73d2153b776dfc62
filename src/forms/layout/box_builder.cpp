#include "forms/layout/box_builder.h"

#include <cstddef>

#include "automation/runtime_error.h"
#include "forms/form.h"
#include "forms/layout/panel.h"
#include "forms/scroll_bar.h"
#include "forms/simple_controls.h"
#include "forms/tab.h"
#include "forms/text_box.h"

namespace mirelo::forms::layout {

Box BoxBuilder::Build() {
  std::vector<forms::Control*> controls = form_.Controls();
  std::erase_if(controls, [](const forms::Control* control) { return control->Parent() != nullptr; });
  Box all = Fill(nullptr, controls);
  all.margin = gaps_.margin;
  return all;
}

// What the fields of a panel are called is as wide in all its lines; a panel inside of it aligns its own.
Box BoxBuilder::Fill(const forms::Control* panel, const std::vector<forms::Control*>& controls) {
  const auto outer_width = std::exchange(first_width_, std::make_shared<std::int32_t>(0));
  const forms::Control* const outer = std::exchange(panel_, panel);
  maker_.OnPanel(panel_);
  Box filled = Make(PanelOf(layout_, panel == nullptr ? std::string() : panel->Name(), controls));
  panel_ = outer;
  maker_.OnPanel(panel_);
  first_width_ = outer_width;
  return filled;
}

Box BoxBuilder::Make(const Part& part) {
  Box box;
  switch (part.kind) {
    case Part::Kind::Control:
    case Part::Kind::Spin:
    case Part::Kind::Swatch:
    case Part::Kind::Title:
      box = MakeControl(part);
      break;
    case Part::Kind::Words:
      box = maker_.MakeWords(part.name);
      break;
    case Part::Kind::Heading:
      box = maker_.MakeHeading(part.name);
      break;
    case Part::Kind::Row:
      box = MakeInLine(Box::Kind::Row, part);
      break;
    case Part::Kind::Column:
      box = MakeInLine(Box::Kind::Column, part);
      break;
    case Part::Kind::Fields:
      box = MakeLines(part);
      break;
    case Part::Kind::Palette:
      box = MakePalette(part);
      break;
    case Part::Kind::Indent:
      box = {.kind = Box::Kind::Leaf};
      box.needs = [indent = gaps_.indent] { return Extent{indent, 0}; };
      break;
    case Part::Kind::Space:
    case Part::Kind::Unseen:
      box = {.kind = Box::Kind::Space};
      break;
  }
  box.stretch = part.stretch;
  return box;
}

Box BoxBuilder::MakeControl(const Part& part) {
  if (part.has_first_focus) first_ = &Find<forms::Control>(part.name);
  maker_.Called(part.called);
  switch (part.kind) {
    case Part::Kind::Spin:
      return maker_.MakeSpinBox(Find<forms::TextBox>(part.name), Find<forms::ScrollBar>(part.other));
    case Part::Kind::Swatch:
      return maker_.MakeSwatchBox(Find<forms::TextBox>(part.name));
    case Part::Kind::Title:
      return maker_.MakeTitle(Find<forms::Label>(part.name));
    default:
      break;
  }
  part_ = &part;
  Find<forms::Control>(part.name).Accept(*this);
  return std::exchange(made_, {});
}

Box BoxBuilder::MakeInLine(Box::Kind kind, const Part& part) {
  Box line{.kind = kind, .gap = gaps_.between};
  for (const Part& inner : part.parts) {
    if (inner.kind != Part::Kind::Unseen) line.boxes.push_back(Make(inner));
  }
  return line;
}

Box BoxBuilder::MakeLines(const Part& part) {
  Box lines{.kind = Box::Kind::Lines, .gap = gaps_.between};
  lines.first_width = first_width_;
  for (const Part& line : part.parts) {
    lines.boxes.push_back(MakeInLine(Box::Kind::Row, line));
    lines.boxes.back().gap = gaps_.of_fields;
  }
  return lines;
}

// Cells are told column by column, and read row by row.
Box BoxBuilder::MakePalette(const Part& part) {
  Box cells{.kind = Box::Kind::Cells, .gap = gaps_.of_cells, .rows = part.rows};
  cells.boxes.resize(part.parts.size());
  const auto rows = static_cast<std::size_t>(part.rows);
  for (std::size_t row = 0; row < rows; ++row) {
    for (std::size_t cell = row; cell < part.parts.size(); cell += rows) {
      cells.boxes[cell] = Make(part.parts[cell]);
    }
  }
  std::vector<forms::Control*> controls;
  controls.reserve(part.parts.size());
  for (const Part& cell : part.parts) controls.push_back(form_.Find(cell.name));
  maker_.MadePalette(controls, part.rows, form_.Find(part.other));
  return cells;
}

template <class Kind>
Kind& BoxBuilder::Find(const std::string& name) const {
  auto* control = dynamic_cast<Kind*>(form_.Find(name));
  if (control == nullptr) throw Errors::InvalidProcedureCall();  // the layout is not this form's
  return *control;
}

// The panel's picture stands at its left and its text above its children.
void BoxBuilder::Visit(forms::Panel& panel) {
  Box across{.kind = Box::Kind::Row, .gap = gaps_.margin};
  across.boxes.push_back(maker_.MakePanelPicture(panel));
  Box down{.kind = Box::Kind::Column, .gap = gaps_.between, .stretch = 1};
  down.boxes.push_back(maker_.MakePanelHeading(panel));
  if (!panel.Children().empty()) {
    down.boxes.push_back(Fill(&panel, panel.Children()));
    down.boxes.back().stretch = 1;
  }
  across.boxes.push_back(std::move(down));
  made_ = std::move(across);
}

void BoxBuilder::Visit(forms::Tab& tab) {
  Box all{.kind = Box::Kind::Column, .gap = gaps_.between};
  all.boxes.push_back(maker_.MakeTabStrip(tab));
  Box pages{.kind = Box::Kind::Stack, .stretch = 1};
  for (forms::Control* page : tab.Children()) {
    pages.boxes.push_back(Fill(page, page->Children()));
    pages.boxes.back().margin = gaps_.between;
  }
  all.boxes.push_back(std::move(pages));
  made_ = std::move(all);
}

}  // namespace mirelo::forms::layout
