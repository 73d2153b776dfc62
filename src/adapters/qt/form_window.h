#pragma once

#include <QWidget>

#include "adapters/qt/top_line.h"
#include "adapters/qt/view.h"
#include "automation/event.h"
#include "host/window_placement.h"

namespace mirelo::forms {
class Control;
class Form;
}  // namespace mirelo::forms

namespace mirelo::qt {

class QtLoop;

// A form as a modal window: it is seen while the form is visible, and its close box closes the form.
class FormWindow final : public QWidget {
 public:
  // Neither form nor loop may end before the window. `above` is the window that it lies above; null for none.
  // A top stands above the form; null for none.
  FormWindow(forms::Form& form, QtLoop& loop, QWidget* above, const TopLine* top = nullptr);
  ~FormWindow() override;

  forms::Form& form() const { return form_; }
  const Views& views() const { return views_; }

  // The place of the window with its frame, and the size of what is inside of the frame. Before it is shown:
  // where it will be.
  host::WindowPlacement Placement() const;
  // A place off every screen is moved onto the nearest.
  void Place(const host::WindowPlacement& placement);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void ShowForm();
  void ShowFocus();
  void FocusFirst();
  void FollowFocus(QWidget* now);
  QSize Fitting(const QSize& size) const;
  void Center();
  void RememberPlace();

  forms::Form& form_;
  QtLoop& loop_;
  Views views_;
  Event<>::Cookie subscription_;
  QWidget* first_ = nullptr;                 // what the layout gives the focus to
  const forms::Control* focused_ = nullptr;  // as the form says
  QRect normal_;                             // while it is neither minimised nor maximised
};

}  // namespace mirelo::qt
