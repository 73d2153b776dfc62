#pragma once

#include <QIcon>
#include <string>

namespace mirelo::qt {

// The picture of that name, drawn for whatever size is asked for: "left", "all-left", "right", "all-right",
// "up", "down", "delete", "chart", "error", "send", "ignore", "retry" and "abort". No picture for another
// name.
QIcon Picture(const std::string& name);

}  // namespace mirelo::qt
