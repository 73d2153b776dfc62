#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

class QWidget;

namespace mirelo::qt {

class QtLoop;

struct BoxWords {
  std::string text;
  std::string title;
  int style;  // an icon of host::Desktop
};

// A modal box with a button for each choice and one that cancels, above a window (null for above none).
// Which choice was made; nothing when the box was cancelled or closed.
std::optional<std::size_t> ShowChoiceBox(QtLoop& loop, QWidget* above, const BoxWords& words,
                                         const std::vector<std::string>& choices);

}  // namespace mirelo::qt
