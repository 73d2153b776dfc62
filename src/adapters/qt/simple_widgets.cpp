// What a person only looks at: pictures and rules.

#include <QFrame>
#include <QLabel>

#include "adapters/qt/pictures.h"
#include "adapters/qt/view.h"
#include "adapters/qt/widgets.h"
#include "forms/layout/measures.h"
#include "forms/simple_controls.h"

namespace mirelo::qt {

QWidget* MakeWidget(forms::Image& image, Views& views) {
  auto* widget = new QLabel;
  views.Add(image, *widget, [&image, widget] {
    ShowState(image, *widget);
    widget->setPixmap(Picture(image.Picture()).pixmap(forms::layout::kSmallPicture));
  });
  return widget;
}

QWidget* MakeWidget(forms::Line& line, Views& views) {
  auto* widget = new QFrame;
  widget->setFrameShape(QFrame::HLine);
  widget->setFrameShadow(QFrame::Sunken);
  views.Add(line, *widget, [&line, widget] { ShowState(line, *widget); });
  return widget;
}

}  // namespace mirelo::qt
