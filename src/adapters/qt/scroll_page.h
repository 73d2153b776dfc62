#pragma once

#include <QScrollArea>

namespace mirelo::qt {

// A page of a window that shows its contents as they would stand by themselves wherever there is room for
// them, and scrolls them where there is not.
//
// The mouse wheel over a box that does not have the focus scrolls the page: a person who scrolls it must not
// change what happens to pass below the mouse.
class ScrollPage final : public QScrollArea {
 public:
  // Takes the contents, which have their layout by then.
  explicit ScrollPage(QWidget& contents);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

  // Scrolls so that a widget of the page is seen whole.
  void ShowWhole(const QWidget& widget);

 protected:
  bool focusNextPrevChild(bool next) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
};

// Scrolls the pages that a widget stands on so that it can be seen.
void Reveal(QWidget& widget);

}  // namespace mirelo::qt
