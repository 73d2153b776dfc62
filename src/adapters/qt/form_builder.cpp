#include "adapters/qt/form_builder.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <algorithm>
#include <cstddef>
#include <utility>

#include "adapters/qt/enter_asks.h"
#include "adapters/qt/focus_arrows.h"
#include "adapters/qt/grid_view.h"
#include "adapters/qt/text.h"
#include "adapters/qt/view.h"
#include "adapters/qt/widgets.h"
#include "automation/runtime_error.h"
#include "forms/check_box.h"
#include "forms/control.h"
#include "forms/form.h"
#include "forms/layout/layout.h"
#include "forms/layout/panel.h"
#include "forms/scroll_bar.h"
#include "forms/simple_controls.h"
#include "forms/text_box.h"

namespace mirelo::qt {

using forms::layout::Part;

namespace {

constexpr int kGap = 8;           // between parts
constexpr int kGapOfFields = 12;  // between what a field is called and the field
constexpr int kIndent = 12;

void MakeBold(QWidget& widget) {
  QFont font = widget.font();
  font.setBold(true);
  widget.setFont(font);
}

}  // namespace

QWidget* FormBuilder::Build(QWidget& window, QWidget* before) {
  std::vector<forms::Control*> controls = form_.Controls();
  std::erase_if(controls, [](const forms::Control* control) { return control->Parent() != nullptr; });
  Fill(window, "", controls);

  OrderFocus(before);
  views_.ShowAll();
  AlignFields();
  return first_;
}

// The Tab key goes as the eye does: a form's controls are in the order in which they were made, which knows
// no places.
void FormBuilder::OrderFocus(QWidget* before) const {
  for (QWidget* widget : in_order_) {
    if (widget->focusPolicy() == Qt::NoFocus) continue;
    if (before != nullptr) QWidget::setTabOrder(before, widget);
    before = widget;
  }
}

// What the fields of a panel are called is as wide in all its grids.
void FormBuilder::AlignFields() const {
  for (const auto& grids : aligned_) {
    int width = 0;
    for (const QGridLayout* grid : grids) {
      for (int row = 0; row < grid->rowCount(); ++row) {
        if (const QLayoutItem* called = grid->itemAtPosition(row, 0))
          width = std::max(width, called->sizeHint().width());
      }
    }
    for (QGridLayout* grid : grids) grid->setColumnMinimumWidth(0, width);
  }
}

void FormBuilder::Fill(QWidget& host, const std::string& panel,
                       const std::vector<forms::Control*>& controls) {
  auto* box = new QVBoxLayout(&host);
  box->setContentsMargins(0, 0, 0, 0);
  box->setSpacing(kGap);
  // A panel inside of this one aligns its own fields.
  auto outer = std::exchange(grids_, {});
  PutAll(forms::layout::PanelOf(layout_, panel, controls), *box);
  aligned_.push_back(std::exchange(grids_, std::move(outer)));
}

FormBuilder::Item FormBuilder::Make(const Part& part) {
  switch (part.kind) {
    case Part::Kind::Control:
    case Part::Kind::Spin:
    case Part::Kind::Swatch:
    case Part::Kind::Title:
      return MakeControl(part);
    case Part::Kind::Words:
    case Part::Kind::Heading:
      return MakeWords(part);
    case Part::Kind::Row:
    case Part::Kind::Column: {
      auto* box =
          new QBoxLayout(part.kind == Part::Kind::Row ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
      box->setSpacing(kGap);
      PutAll(part, *box);
      return {nullptr, box};
    }
    case Part::Kind::Fields:
      return MakeFields(part);
    case Part::Kind::Palette:
      return MakePalette(part);
    case Part::Kind::Indent:
    case Part::Kind::Space:
    case Part::Kind::Unseen:
      break;
  }
  return {};
}

FormBuilder::Item FormBuilder::MakeControl(const Part& part) {
  const auto place = static_cast<std::ptrdiff_t>(in_order_.size());  // before what it holds
  QWidget* widget = nullptr;
  switch (part.kind) {
    case Part::Kind::Spin:
      widget = MakeSpinWidget(Find<forms::TextBox>(part.name), Find<forms::ScrollBar>(part.other), views_);
      break;
    case Part::Kind::Swatch:
      widget = MakeSwatchWidget(Find<forms::TextBox>(part.name), views_);
      break;
    default:
      widget = WidgetFor(Find<forms::Control>(part.name));
  }
  in_order_.insert(in_order_.begin() + place, widget);
  if (part.kind == Part::Kind::Title) MakeBold(*widget);
  if (part.has_first_focus) first_ = widget;
  if (!part.asks.empty())
    new EnterAsks(*widget, Find<forms::Label>(part.name), part.asks, views_.loop());  // owned by the widget
  if (auto* const grid = dynamic_cast<GridView*>(widget)) grid->SetUsualWidths(part.usual_widths);
  Name(*widget, part);
  return {widget, nullptr};
}

FormBuilder::Item FormBuilder::MakeFields(const Part& part) {
  auto* grid = new QGridLayout;
  grids_.push_back(grid);
  grid->setHorizontalSpacing(kGapOfFields);
  grid->setVerticalSpacing(kGap);
  grid->setColumnStretch(1, 1);
  int row = 0;
  for (const Part& line : part.parts) {
    words_.clear();
    Put(Make(line.parts.at(0)), row, 0, *grid);
    Put(Make(line.parts.at(1)), row, 1, *grid);
    ++row;
  }
  return {nullptr, grid};
}

FormBuilder::Item FormBuilder::MakePalette(const Part& part) {
  auto* grid = new QGridLayout;
  grid->setSpacing(2);
  const std::size_t first = in_order_.size();
  std::vector<QWidget*> cells;
  for (const Part& cell : part.parts) {
    const int place = static_cast<int>(cells.size());
    cells.push_back(Make(cell).widget);
    cells.back()->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    grid->addWidget(cells.back(), place % part.rows, place / part.rows);
  }
  // Cells are told column by column, and read row by row.
  in_order_.resize(first);
  for (int row = 0; row < part.rows; ++row) {
    for (auto cell = static_cast<std::size_t>(row); cell < cells.size();
         cell += static_cast<std::size_t>(part.rows))
      in_order_.push_back(cells[cell]);
  }
  QWidget* const above = part.other.empty() ? nullptr : views_.WidgetOf(form_.Find(part.other));
  new FocusArrows(std::move(cells), part.rows, above);  // owned by the first cell
  return {nullptr, grid};
}

FormBuilder::Item FormBuilder::MakeWords(const Part& part) {
  auto* label = new QLabel(Shown(part.name));
  label->setTextFormat(Qt::PlainText);
  if (part.kind == Part::Kind::Heading) {
    MakeBold(*label);
    return {label, nullptr};
  }
  words_ = label->text();
  label_ = label;
  return {label, nullptr};
}

void FormBuilder::PutAll(const Part& part, QBoxLayout& into) {
  for (const Part& inner : part.parts) {
    if (inner.kind == Part::Kind::Space) {
      into.addStretch(inner.stretch);
    } else if (inner.kind == Part::Kind::Indent) {
      into.addSpacing(kIndent);
    } else if (inner.kind != Part::Kind::Unseen) {
      Put(Make(inner), inner.stretch, into);
    }
  }
  words_.clear();
}

void FormBuilder::Put(const Item& item, int stretch, QBoxLayout& into) {
  if (item.widget != nullptr) into.addWidget(item.widget, stretch);
  if (item.layout != nullptr) into.addLayout(item.layout, stretch);
}

void FormBuilder::Put(const Item& item, int row, int column, QGridLayout& into) {
  if (item.widget != nullptr) into.addWidget(item.widget, row, column);
  if (item.layout != nullptr) into.addLayout(item.layout, row, column);
}

// A field is read out by what is written in front of it.
void FormBuilder::Name(QWidget& widget, const Part& part) {
  widget.setObjectName(Shown(part.name));
  if (!part.called.empty()) widget.setAccessibleName(Shown(part.called));
  if (const auto* box = dynamic_cast<forms::CheckBox*>(form_.Find(part.name))) {
    words_ = Shown(box->Caption());
    label_ = nullptr;
    return;
  }
  if (words_.isEmpty() || widget.focusPolicy() == Qt::NoFocus) return;
  if (part.called.empty()) widget.setAccessibleName(QString(words_).remove(QLatin1Char(':')));
  if (label_ != nullptr) label_->setBuddy(&widget);
  words_.clear();
}

template <class Kind>
Kind& FormBuilder::Find(const std::string& name) {
  auto* control = dynamic_cast<Kind*>(form_.Find(name));
  if (control == nullptr) throw Errors::InvalidProcedureCall();  // the layout is not this form's
  return *control;
}

QWidget* FormBuilder::WidgetFor(forms::Control& control) {
  control.Accept(*this);
  return std::exchange(made_, nullptr);
}

void FormBuilder::Visit(forms::Button& button) { made_ = MakeWidget(button, views_); }
void FormBuilder::Visit(forms::CheckBox& box) { made_ = MakeWidget(box, views_); }
void FormBuilder::Visit(forms::ComboBox& box) { made_ = MakeWidget(box, views_); }
void FormBuilder::Visit(forms::Grid& grid) { made_ = MakeWidget(grid, views_); }
void FormBuilder::Visit(forms::Image& image) { made_ = MakeWidget(image, views_); }
void FormBuilder::Visit(forms::Label& label) { made_ = MakeWidget(label, views_); }
void FormBuilder::Visit(forms::Line& line) { made_ = MakeWidget(line, views_); }
void FormBuilder::Visit(forms::ListBox& list) { made_ = MakeWidget(list, views_); }
void FormBuilder::Visit(forms::Panel& panel) { made_ = MakePanel(panel); }
void FormBuilder::Visit(forms::ScrollBar& bar) { made_ = MakeWidget(bar, views_); }
void FormBuilder::Visit(forms::Tab& tab) { made_ = MakeTab(tab); }
void FormBuilder::Visit(forms::TextBox& box) { made_ = MakeWidget(box, views_); }

}  // namespace mirelo::qt
