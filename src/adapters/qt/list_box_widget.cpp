#include <QKeyEvent>
#include <QListWidget>
#include <QMouseEvent>
#include <QSignalBlocker>

#include "adapters/qt/text.h"
#include "adapters/qt/view.h"
#include "adapters/qt/widgets.h"
#include "forms/list_box.h"

namespace mirelo::qt {

namespace {

// A click counts when the mouse is released on the entry that it was pressed on, as for buttons.
class ListWidget final : public QListWidget {
 public:
  explicit ListWidget(forms::ListBox& list) : list_(list) {
    setUniformItemSizes(true);
    setSpacing(1);
  }

  void Follow(const View& view) { view_ = &view; }

  void Show() {
    ShowState(list_, *this);
    const QSignalBlocker quiet(this);
    if (!HasItems()) {
      clear();
      for (const auto& item : list_.Items()) addItem(Shown(item));
    }
    if (currentRow() == list_.ListIndex() && !selectedItems().isEmpty() == (list_.ListIndex() >= 0)) return;
    setCurrentRow(list_.ListIndex());
    if (list_.ListIndex() < 0) clearSelection();
  }

 protected:
  void mousePressEvent(QMouseEvent* event) override {
    QListWidget::mousePressEvent(event);
    pressed_ = event->button() == Qt::LeftButton ? RowAt(*event) : -1;
  }
  void mouseMoveEvent(QMouseEvent*) override {}  // no dragging over entries
  void mouseReleaseEvent(QMouseEvent* event) override {
    QListWidget::mouseReleaseEvent(event);
    const int row = RowAt(*event);
    if (row < 0 || row != pressed_) return view_->Act([] {});
    pressed_ = -1;
    view_->Act([&] { list_.UserSelect(row); });
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    const int row = event->button() == Qt::LeftButton ? RowAt(*event) : -1;
    pressed_ = -1;  // the release that follows is no click
    if (row >= 0) view_->Act([&] { list_.UserDoubleClick(row); });
  }
  void keyPressEvent(QKeyEvent* event) override {
    QListWidget::keyPressEvent(event);
    if (currentRow() >= 0 && currentRow() != list_.ListIndex())
      view_->Act([&] { list_.UserSelect(currentRow()); });
  }

 private:
  int RowAt(const QMouseEvent& event) const { return indexAt(event.position().toPoint()).row(); }

  bool HasItems() const {
    if (count() != list_.ListCount()) return false;
    for (int i = 0; i < count(); ++i) {
      if (item(i)->text() != Shown(list_.List(i))) return false;
    }
    return true;
  }

  forms::ListBox& list_;
  const View* view_ = nullptr;
  int pressed_ = -1;
};

}  // namespace

QWidget* MakeWidget(forms::ListBox& list, Views& views) {
  auto* widget = new ListWidget(list);
  widget->Follow(views.Add(list, *widget, [widget] { widget->Show(); }));
  return widget;
}

}  // namespace mirelo::qt
