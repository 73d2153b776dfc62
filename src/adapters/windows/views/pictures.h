#pragma once

#include "adapters/windows/views/native.h"

#include <string>
#include <utility>

namespace mirelo::windows {

// An icon, which goes with its owner.
class Icon {
 public:
  explicit Icon(HICON icon = nullptr) : icon_(icon) {}
  Icon(Icon&& other) noexcept : icon_(std::exchange(other.icon_, nullptr)) {}
  Icon& operator=(Icon&& other) noexcept {
    std::swap(icon_, other.icon_);
    return *this;
  }
  ~Icon() {
    if (icon_ != nullptr) ::DestroyIcon(icon_);
  }
  HICON get() const { return icon_; }

 private:
  HICON icon_;
};

// The picture of that name as an icon, so wide and high; null for a name that is not known.
Icon PictureIcon(const std::string& name, int pixels);

}  // namespace mirelo::windows
