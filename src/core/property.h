#pragma once

#include <utility>

namespace mirelo {

// A property that is a plain stored value: `object.Name()` gets it, `object.Name(value)` lets it. It starts
// at zero or empty. Nothing is checked, and neither call can fail.
template <class T>
class Property {
 public:
  const T& operator()() const { return value_; }
  void operator()(const T& value) { value_ = value; }
  void operator()(T&& value) { value_ = std::move(value); }

 private:
  T value_{};
};

}  // namespace mirelo
