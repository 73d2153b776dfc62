#pragma once

#include <QIcon>
#include <string>

namespace mirelo::qt {

constexpr int kSmallPicture = 16;  // pixels, of buttons and cells
constexpr int kLargePicture = 40;  // of headings

// The picture of that name, drawn for whatever size is asked for: "left", "all-left", "right", "all-right",
// "up", "down", "delete", "chart", "error", "send", "ignore", "retry" and "abort". No picture for another
// name.
QIcon Picture(const std::string& name);

}  // namespace mirelo::qt
