#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include "adapters/qt/color.h"
#include "adapters/qt/text.h"
#include "adapters/qt/view.h"
#include "adapters/qt/widgets.h"
#include "forms/layout/measures.h"
#include "forms/text_box.h"

namespace mirelo::qt {

namespace {

void ShowBackColor(const forms::TextBox& box, QWidget& widget) {
  QPalette palette;
  if (box.BackColor() != forms::kWindowBackground) {
    const QColor ground = ColorOf(box.BackColor(), palette);
    palette.setColor(QPalette::Base, ground);
    palette.setColor(QPalette::Text, InkOn(ground));
  }
  if (widget.palette() != palette) widget.setPalette(palette);
}

QWidget* MakeOneLine(forms::TextBox& box, Views& views) {
  auto* widget = new QLineEdit;
  const View& view = views.Add(box, *widget, [&box, widget] {
    ShowState(box, *widget);
    ShowBackColor(box, *widget);
    widget->setReadOnly(box.Locked());
    if (const QString text = Shown(box.Text()); widget->text() != text) widget->setText(text);
  });
  QObject::connect(widget, &QLineEdit::textEdited, widget,
                   [&box, &view](const QString& text) { view.Act([&] { box.UserEdit(Typed(text)); }); });
  return widget;
}

QString WithPlainLineEnds(const std::string& text) {
  return Shown(text).replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

QWidget* MakeSeveralLines(forms::TextBox& box, Views& views) {
  auto* widget = new QPlainTextEdit;
  widget->setTabChangesFocus(true);
  const QFontMetrics letters = widget->fontMetrics();
  widget->setMinimumSize(letters.averageCharWidth() * forms::layout::kLettersOfReport / 2,
                         letters.lineSpacing() * forms::layout::kLinesOfReport / 2);
  const View& view = views.Add(box, *widget, [&box, widget] {
    ShowState(box, *widget);
    ShowBackColor(box, *widget);
    widget->setReadOnly(box.Locked());
    widget->setTextInteractionFlags(box.Locked() ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                                                 : Qt::TextEditorInteraction);
    const QString text = WithPlainLineEnds(box.Text());
    if (widget->toPlainText() == text) return;
    const QSignalBlocker quiet(widget);
    widget->setPlainText(text);
  });
  QObject::connect(widget, &QPlainTextEdit::textChanged, widget, [&box, &view, widget] {
    view.Act([&] {
      // The model's line ends are those of the report that was put in.
      QString text = widget->toPlainText();
      box.UserEdit(Typed(text.replace(QLatin1String("\n"), QLatin1String("\r\n"))));
    });
  });
  return widget;
}

}  // namespace

QWidget* MakeWidget(forms::TextBox& box, Views& views) {
  return box.MultiLine() ? MakeSeveralLines(box, views) : MakeOneLine(box, views);
}

}  // namespace mirelo::qt
