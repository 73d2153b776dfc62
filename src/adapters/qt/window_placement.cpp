// Where a form's window is and is put. The place is that of the frame, the size that of what is inside.

#include <QApplication>
#include <QScreen>
#include <QStyle>
#include <algorithm>

#include "adapters/qt/form_window.h"
#include "adapters/qt/qt_loop.h"
#include "host/form_state.h"

namespace mirelo::qt {

namespace {

using host::WindowPlacement;

// About what desktops put around a window, with its title: how much is known only when it is shown.
constexpr QSize kFrame{8, 40};

QSize RoomOn(const QRect& screen) { return screen.size() - kFrame; }

QRect Within(const QRect& window, const QRect& screen) {
  const QSize size = window.size().boundedTo(RoomOn(screen));
  const int left = std::clamp(window.left(), screen.left(), screen.right() + 1 - size.width());
  const int top = std::clamp(window.top(), screen.top(), screen.bottom() + 1 - size.height());
  return QRect(QPoint(left, top), size);
}

// On which screen most of it lies; the first screen when it lies on none.
const QScreen& ScreenOf(const QRect& window) {
  const auto screens = QGuiApplication::screens();
  const auto covered = [&](const QScreen* screen) {
    const QRect common = screen->availableGeometry() & window;
    return common.width() * common.height();
  };
  return **std::max_element(screens.begin(), screens.end(),
                            [&](const QScreen* a, const QScreen* b) { return covered(a) < covered(b); });
}

}  // namespace

WindowPlacement FormWindow::Placement() const {
  WindowPlacement placement;
  placement.state = host::PlacementState(form_.WindowState());
  placement.normal = {normal_.left(), normal_.top(), normal_.left() + normal_.width(),
                      normal_.top() + normal_.height()};
  return placement;
}

// A window that is being maximised grows before it is told that it is, so one that fills the screen is taken
// for such a one.
void FormWindow::RememberPlace() {
  const QSize room = screen()->availableGeometry().size();
  const bool fills_screen = width() >= room.width() && height() >= room.height();
  if (windowState() == Qt::WindowNoState && !fills_screen) normal_ = QRect(pos(), size());
}

void FormWindow::Place(const WindowPlacement& placement) {
  const auto& wanted = placement.normal;
  const QSize room = QSize(wanted.right - wanted.left, wanted.bottom - wanted.top)
                         .expandedTo(minimumSizeHint())
                         .expandedTo(minimumSize())
                         .boundedTo(maximumSize());
  const QRect place(QPoint(wanted.left, wanted.top), room);
  const QRect seen = Within(place, ScreenOf(place).availableGeometry());
  if (windowState() != Qt::WindowNoState) setWindowState(Qt::WindowNoState);
  move(seen.topLeft());
  resize(seen.size());
  normal_ = seen;
  if (const auto state = host::FormState(placement.state); state && *state != form_.WindowState()) {
    loop_.Guard([&] { form_.WindowState(*state); });
  } else {
    ShowForm();  // its state again
  }
}

// A window that is too high for the screen has its pages scroll, and gets as much wider as their scroll bars
// take.
QSize FormWindow::Fitting(const QSize& size) const {
  const QSize room = RoomOn(screen()->availableGeometry());
  const int bar = size.height() > room.height() ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
  return (size + QSize(bar, 0)).boundedTo(room);
}

// Over the window below, otherwise in the middle of the screen.
void FormWindow::Center() {
  const QWidget* below = parentWidget();
  const QScreen& screen = below != nullptr ? *below->screen() : *QGuiApplication::primaryScreen();
  const QRect around =
      below != nullptr && below->isVisible() ? below->frameGeometry() : screen.availableGeometry();
  QRect place(QPoint(0, 0), size());
  place.moveCenter(around.center());
  normal_ = Within(place, screen.availableGeometry());
  move(normal_.topLeft());
}

}  // namespace mirelo::qt
