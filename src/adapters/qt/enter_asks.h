#pragma once

#include <QObject>
#include <string>

class QWidget;

namespace mirelo::forms {
class Label;
}

namespace mirelo::qt {

class QtLoop;

// Has Enter, on a label that can be clicked, ask before it clicks. A person who looks at a window presses it
// to go on, and not to take what happens to have the focus.
class EnterAsks final : public QObject {
 public:
  // Lives as long as the widget, which is the label's.
  EnterAsks(QWidget& widget, forms::Label& label, std::string question, QtLoop& loop);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Ask() const;

  QWidget& widget_;
  forms::Label& label_;
  std::string question_;
  QtLoop& loop_;
};

}  // namespace mirelo::qt
