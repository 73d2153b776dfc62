#include "adapters/qt/choice_box.h"

#include <QMessageBox>
#include <QPushButton>
#include <algorithm>

#include "adapters/qt/message_box.h"
#include "adapters/qt/qt_loop.h"
#include "adapters/qt/text.h"

namespace mirelo::qt {

std::optional<std::size_t> ShowChoiceBox(QtLoop& loop, QWidget* above, const BoxWords& words,
                                         const std::vector<std::string>& choices) {
  QMessageBox box(IconFor(words.style), Shown(words.title), Shown(words.text), QMessageBox::NoButton, above);
  box.setTextFormat(Qt::PlainText);
  box.setTextInteractionFlags(Qt::TextSelectableByMouse);
  box.setWindowModality(Qt::ApplicationModal);
  std::vector<QAbstractButton*> buttons;
  buttons.reserve(choices.size());
  for (const std::string& choice : choices)
    buttons.push_back(box.addButton(Shown(choice), QMessageBox::AcceptRole));
  box.setEscapeButton(box.addButton(QMessageBox::Cancel));
  if (!choices.empty()) box.setDefaultButton(qobject_cast<QPushButton*>(buttons.front()));
  box.show();
  loop.RunUntil([&box] { return !box.isVisible(); });
  const auto pressed = std::find(buttons.begin(), buttons.end(), box.clickedButton());
  if (pressed == buttons.end()) return std::nullopt;
  return static_cast<std::size_t>(pressed - buttons.begin());
}

}  // namespace mirelo::qt
