#pragma once

#include <utility>

namespace mirelo::com {

// A reference to an interface that is counted; null refers to nothing.
template <class Interface>
class Held {
 public:
  Held() = default;
  explicit Held(Interface* pointer) : pointer_(pointer) {
    if (pointer_ != nullptr) pointer_->AddRef();
  }
  // Takes over a reference that was counted already.
  static Held Adopting(Interface* pointer) {
    Held held;
    held.pointer_ = pointer;
    return held;
  }
  Held(const Held& other) : Held(other.pointer_) {}
  Held(Held&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  Held& operator=(Held other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~Held() {
    if (pointer_ != nullptr) pointer_->Release();
  }

  // Where functions put a counted reference. This refers to nothing before.
  template <class As = void**>
  As Place() {
    return reinterpret_cast<As>(&pointer_);
  }
  // Hands the counted reference on.
  Interface* Release() { return std::exchange(pointer_, nullptr); }

  Interface* get() const { return pointer_; }
  Interface* operator->() const { return pointer_; }
  explicit operator bool() const { return pointer_ != nullptr; }
  friend bool operator==(const Held& a, const Held& b) { return a.pointer_ == b.pointer_; }

 private:
  Interface* pointer_ = nullptr;
};

// The interface of that id of an object that may be null; null where it has none.
template <class Interface, class Of>
Held<Interface> Asked(Of* object, const _GUID& id) {
  Held<Interface> answer;
  if (object != nullptr && object->QueryInterface(id, answer.Place()) < 0) return {};
  return answer;
}

}  // namespace mirelo::com
