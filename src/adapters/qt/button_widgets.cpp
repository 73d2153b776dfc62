// Push buttons and check boxes.

#include <QCheckBox>
#include <QPushButton>

#include "adapters/qt/pictures.h"
#include "adapters/qt/text.h"
#include "adapters/qt/view.h"
#include "adapters/qt/widgets.h"
#include "forms/button.h"
#include "forms/check_box.h"

namespace mirelo::qt {

QWidget* MakeWidget(forms::Button& button, Views& views) {
  auto* widget = new QPushButton;
  if (button.Caption().empty()) widget->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  const View& view = views.Add(button, *widget, [&button, widget] {
    ShowState(button, *widget);
    widget->setText(Shown(button.Caption()));
    widget->setIcon(Picture(button.Picture()));
    widget->setDefault(button.Default());
    // A button that shows a picture only is read out by its tool tip.
    if (button.Caption().empty() && !button.ToolTipText().empty())
      widget->setAccessibleName(Shown(button.ToolTipText()));
  });
  QObject::connect(widget, &QPushButton::clicked, widget,
                   [&button, &view] { view.Act([&button] { button.UserPress(); }); });
  return widget;
}

QWidget* MakeWidget(forms::CheckBox& box, Views& views) {
  auto* widget = new QCheckBox;
  const View& view = views.Add(box, *widget, [&box, widget] {
    ShowState(box, *widget);
    widget->setText(Shown(box.Caption()));
    widget->setChecked(box.Value() != 0);
  });
  QObject::connect(widget, &QCheckBox::clicked, widget,
                   [&box, &view] { view.Act([&box] { box.UserClick(); }); });
  return widget;
}

}  // namespace mirelo::qt
