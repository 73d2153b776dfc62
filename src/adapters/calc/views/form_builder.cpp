#include "adapters/calc/views/form_builder.h"

#include "adapters/calc/views/boxes_of_controls.h"
#include "adapters/calc/views/views.h"
#include "automation/runtime_error.h"
#include "forms/button.h"
#include "forms/check_box.h"
#include "forms/combo_box.h"
#include "forms/form.h"
#include "forms/grid.h"
#include "forms/layout/panel.h"
#include "forms/list_box.h"
#include "forms/scroll_bar.h"
#include "forms/simple_controls.h"
#include "forms/tab.h"
#include "forms/text_box.h"

namespace mirelo::calc {

using forms::layout::Box;
using forms::layout::Part;

namespace {

// Pixels.
constexpr int kGap = 6;           // between parts
constexpr int kGapOfFields = 10;  // between what a field is called and the field
constexpr int kGapOfCells = 2;
constexpr int kIndent = 12;
constexpr int kMargin = 10;

}  // namespace

Box FormBuilder::Build() {
  std::vector<forms::Control*> controls = form_.Controls();
  std::erase_if(controls, [](const forms::Control* control) { return control->Parent() != nullptr; });
  Box all = Fill(nullptr, controls);
  all.margin = kMargin;
  return all;
}

// What the fields of a panel are called is as wide in all its lines; a panel inside of it aligns its own.
Box FormBuilder::Fill(const forms::Control* panel, const std::vector<forms::Control*>& controls) {
  const auto outer_width = std::exchange(first_width_, std::make_shared<std::int32_t>(0));
  const forms::Control* const outer_page = std::exchange(views_.page, panel);
  Box filled = Make(PanelOf(layout_, panel == nullptr ? std::string() : panel->Name(), controls));
  views_.page = outer_page;
  first_width_ = outer_width;
  return filled;
}

Box FormBuilder::Make(const Part& part) {
  Box box;
  switch (part.kind) {
    case Part::Kind::Control:
    case Part::Kind::Spin:
    case Part::Kind::Swatch:
    case Part::Kind::Title:
      box = MakeControl(part);
      break;
    case Part::Kind::Words:
      box = MakeWords(part.name, views_);
      break;
    case Part::Kind::Heading:
      box = MakeHeading(part.name, views_);
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
      box.needs = [] { return forms::layout::Extent{kIndent, 0}; };
      break;
    case Part::Kind::Space:
    case Part::Kind::Unseen:
      box = {.kind = Box::Kind::Space};
      break;
  }
  box.stretch = part.stretch;
  return box;
}

Box FormBuilder::MakeControl(const Part& part) {
  if (part.has_first_focus) first_ = &Find<forms::Control>(part.name);
  switch (part.kind) {
    case Part::Kind::Spin:
      return MakeSpinBox(Find<forms::TextBox>(part.name), Find<forms::ScrollBar>(part.other), views_);
    case Part::Kind::Swatch:
      return MakeSwatchBox(Find<forms::TextBox>(part.name), views_);
    case Part::Kind::Title:
      return MakeTitle(Find<forms::Label>(part.name), views_);
    default:
      break;
  }
  part_ = &part;
  Find<forms::Control>(part.name).Accept(*this);
  return std::exchange(made_, {});
}

Box FormBuilder::MakeInLine(Box::Kind kind, const Part& part) {
  Box line{.kind = kind, .gap = kGap};
  for (const Part& inner : part.parts) {
    if (inner.kind != Part::Kind::Unseen) line.boxes.push_back(Make(inner));
  }
  return line;
}

Box FormBuilder::MakeLines(const Part& part) {
  Box lines{.kind = Box::Kind::Lines, .gap = kGap};
  lines.first_width = first_width_;
  for (const Part& line : part.parts) {
    lines.boxes.push_back(MakeInLine(Box::Kind::Row, line));
    lines.boxes.back().gap = kGapOfFields;
  }
  return lines;
}

Box FormBuilder::MakePalette(const Part& part) {
  Box cells = MakeInLine(Box::Kind::Cells, part);
  cells.gap = kGapOfCells;
  cells.rows = part.rows;
  return cells;
}

template <class Kind>
Kind& FormBuilder::Find(const std::string& name) const {
  auto* control = dynamic_cast<Kind*>(form_.Find(name));
  if (control == nullptr) throw Errors::InvalidProcedureCall();  // the layout is not this form's
  return *control;
}

void FormBuilder::Visit(forms::Button& button) { made_ = MakeBox(button, views_); }
void FormBuilder::Visit(forms::CheckBox& box) { made_ = MakeBox(box, views_); }
void FormBuilder::Visit(forms::ComboBox& box) { made_ = MakeBox(box, views_); }
void FormBuilder::Visit(forms::Grid& grid) { made_ = MakeBox(grid, views_, part_->usual_widths); }
void FormBuilder::Visit(forms::Image& image) { made_ = MakeBox(image, views_); }
void FormBuilder::Visit(forms::Label& label) { made_ = MakeBox(label, views_, part_->asks); }
void FormBuilder::Visit(forms::Line& line) { made_ = MakeBox(line, views_); }
void FormBuilder::Visit(forms::ListBox& list) { made_ = MakeBox(list, views_); }
void FormBuilder::Visit(forms::ScrollBar& bar) { made_ = MakeBox(bar, views_); }
void FormBuilder::Visit(forms::TextBox& box) { made_ = MakeBox(box, views_); }

// The panel's picture stands at its left and its text above its children.
void FormBuilder::Visit(forms::Panel& panel) {
  Box across{.kind = Box::Kind::Row, .gap = kMargin};
  across.boxes.push_back(MakePanelPicture(panel, views_));
  Box down{.kind = Box::Kind::Column, .gap = kGap, .stretch = 1};
  down.boxes.push_back(MakePanelHeading(panel, views_));
  if (!panel.Children().empty()) {
    down.boxes.push_back(Fill(&panel, panel.Children()));
    down.boxes.back().stretch = 1;
  }
  across.boxes.push_back(std::move(down));
  made_ = std::move(across);
}

void FormBuilder::Visit(forms::Tab& tab) {
  Box all{.kind = Box::Kind::Column, .gap = kGap};
  all.boxes.push_back(MakeTabStrip(tab, views_));
  Box pages{.kind = Box::Kind::Stack, .stretch = 1};
  for (forms::Control* page : tab.Children()) {
    pages.boxes.push_back(Fill(page, page->Children()));
    pages.boxes.back().margin = kGap;
  }
  all.boxes.push_back(std::move(pages));
  made_ = std::move(all);
}

}  // namespace mirelo::calc
