#pragma once

#include <QObject>
#include <vector>

class QWidget;

namespace mirelo::qt {

// Lets the arrow keys move the focus among equal cells that stand in columns of `rows`, and to and from one
// wide cell above them.
class FocusArrows final : public QObject {
 public:
  // Lives as long as the first cell. `above` is null where there is none.
  FocusArrows(std::vector<QWidget*> cells, int rows, QWidget* above);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Null at an edge.
  QWidget* Reached(QObject* from, int key);

  std::vector<QWidget*> cells_;
  int rows_;
  QWidget* above_;
  QWidget* left_below_;  // from which the one above was reached
};

}  // namespace mirelo::qt
