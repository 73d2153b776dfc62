#include "adapters/qt/top_line.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>

#include "adapters/qt/qt_loop.h"
#include "adapters/qt/text.h"

namespace mirelo::qt {

namespace {

constexpr int kGapBeforeButton = 8;
constexpr int kFewestLettersOfLine = 16;

// The end of a path says most, and its beginning next to that.
class ElidedText final : public QWidget {
 public:
  explicit ElidedText(QString text) : text_(std::move(text)) {
    setObjectName(QLatin1String("TopLineText"));
    setAccessibleName(text_);
    setToolTip(text_);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  }

  QSize sizeHint() const override { return {minimumSizeHint().width(), fontMetrics().height()}; }
  QSize minimumSizeHint() const override {
    return {fontMetrics().averageCharWidth() * kFewestLettersOfLine, fontMetrics().height()};
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(text_, Qt::ElideMiddle, width()));
  }

 private:
  QString text_;
};

}  // namespace

TopLineWidget MakeTopLine(const TopLine& top, QtLoop& loop) {
  auto* line = new QWidget;
  auto* across = new QHBoxLayout(line);
  across->setContentsMargins(0, 0, 0, 0);
  across->setSpacing(kGapBeforeButton);
  across->addWidget(new ElidedText(Shown(top.text)), 1);
  if (top.button.empty()) return {line, nullptr};
  auto* button = new QPushButton(Shown(top.button));
  button->setObjectName(QLatin1String("TopLineButton"));
  button->setAutoDefault(true);  // so that Enter presses it where it has the focus, and not the form's own
  across->addWidget(button);
  QObject::connect(button, &QPushButton::clicked, button, [press = top.press, &loop] { loop.Guard(press); });
  return {line, button};
}

}  // namespace mirelo::qt
