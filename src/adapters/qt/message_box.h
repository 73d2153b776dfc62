#pragma once

#include <QMessageBox>
#include <string>

#include "host/desktop.h"

class QWidget;

namespace mirelo::qt {

class QtLoop;

// The icon of one of Desktop's styles.
QMessageBox::Icon IconFor(int style);

// Desktop::MessageBox, above a window; null for above none. `preset` is the button that Enter presses; the
// first one where it is none.
host::Desktop::Answer ShowBox(QtLoop& loop, QWidget* above, const std::string& text, int style,
                              const std::string& title,
                              QMessageBox::StandardButton preset = QMessageBox::NoButton);

}  // namespace mirelo::qt
