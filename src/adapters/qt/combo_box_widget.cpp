#include <QComboBox>
#include <QLineEdit>

#include "adapters/qt/text.h"
#include "adapters/qt/view.h"
#include "adapters/qt/widgets.h"
#include "forms/combo_box.h"
#include "forms/layout/measures.h"

namespace mirelo::qt {

namespace {

constexpr int kFewestLetters = 12;  // that fit at least

bool HasItems(const QComboBox& widget, const std::vector<std::string>& items) {
  if (widget.count() != static_cast<int>(items.size())) return false;
  for (int i = 0; i < widget.count(); ++i) {
    if (widget.itemText(i) != Shown(items[static_cast<std::size_t>(i)])) return false;
  }
  return true;
}

void ShowBox(const forms::ComboBox& box, QComboBox& widget) {
  ShowState(box, widget);
  if (!HasItems(widget, box.Items())) {
    widget.clear();
    for (const auto& item : box.Items()) widget.addItem(Shown(item));
  }
  if (widget.currentIndex() != box.ListIndex()) widget.setCurrentIndex(box.ListIndex());
  if (!widget.isEditable()) return;
  if (const QString text = Shown(box.Text()); widget.currentText() != text) widget.setEditText(text);
}

}  // namespace

QWidget* MakeWidget(forms::ComboBox& box, Views& views) {
  auto* widget = new QComboBox;
  widget->setEditable(box.ComboStyle() == forms::ComboBox::Style::DropDown);
  widget->setInsertPolicy(QComboBox::NoInsert);
  widget->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  widget->setMinimumContentsLength(kFewestLetters);
  widget->setMaxVisibleItems(forms::layout::kLinesOfDroppedList);
  const View& view = views.Add(box, *widget, [&box, widget] { ShowBox(box, *widget); });
  QObject::connect(widget, &QComboBox::activated, widget,
                   [&box, &view](int index) { view.Act([&] { box.UserChoose(index); }); });
  if (widget->isEditable()) {
    widget->setCompleter(nullptr);  // it would put in what nobody has typed
    QObject::connect(widget->lineEdit(), &QLineEdit::textEdited, widget,
                     [&box, &view](const QString& text) { view.Act([&] { box.UserEdit(Typed(text)); }); });
  }
  return widget;
}

}  // namespace mirelo::qt
