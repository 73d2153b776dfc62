#pragma once

#include <QString>
#include <string>

namespace mirelo::qt {

// Texts are UTF-8 on the system's side.
inline QString Shown(const std::string& text) { return QString::fromStdString(text); }
inline std::string Typed(const QString& text) { return text.toStdString(); }

}  // namespace mirelo::qt
