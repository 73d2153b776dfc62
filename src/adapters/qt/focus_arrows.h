#pragma once

#include <QObject>
#include <vector>

class QWidget;

namespace mirelo::qt {

// Lets the arrow keys move the focus among equal cells that stand in columns of `rows`.
class FocusArrows final : public QObject {
 public:
  // Lives as long as the first cell.
  FocusArrows(std::vector<QWidget*> cells, int rows);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::vector<QWidget*> cells_;
  int rows_;
};

}  // namespace mirelo::qt
