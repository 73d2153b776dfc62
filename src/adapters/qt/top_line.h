#pragma once

#include <functional>
#include <string>

class QPushButton;
class QWidget;

namespace mirelo::qt {

class QtLoop;

// A line above a form: a text, and a button unless its caption is empty.
struct TopLine {
  std::string text;
  std::string button;
  std::function<void()> press;
};

struct TopLineWidget {
  QWidget* line;
  QPushButton* button;  // null where there is none
};

// Whoever asks gives the line a parent. A text that is too long is cut in the middle; its tool tip is whole.
TopLineWidget MakeTopLine(const TopLine& top, QtLoop& loop);

}  // namespace mirelo::qt
