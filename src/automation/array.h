#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "automation/runtime_error.h"

namespace mirelo {

// A one-dimensional array that carries its lower bound. It starts unallocated: it has no bounds then, and
// asking for one or for an element is error 9.
template <class T>
class Array {
 public:
  Array() = default;
  // Elements `lower` to `upper`, each T(). An upper bound below the lower one is error 9.
  Array(std::int32_t lower, std::int32_t upper) { ReDim(lower, upper); }

  bool IsAllocated() const { return allocated_; }
  std::int32_t LBound() const { return Checked().lower_; }
  std::int32_t UBound() const { return Checked().lower_ + static_cast<std::int32_t>(items_.size()) - 1; }

  // Dimensions anew; the contents go.
  void ReDim(std::int32_t lower, std::int32_t upper) {
    items_.assign(Extent(lower, upper), T());
    lower_ = lower;
    allocated_ = true;
  }

  // Gives it `upper` as the new upper bound and keeps the contents that still fit. An unallocated array
  // starts at `lower_if_new`.
  void ReDimPreserve(std::int32_t upper, std::int32_t lower_if_new = 0) {
    if (!allocated_) return ReDim(lower_if_new, upper);
    items_.resize(Extent(lower_, upper));
  }

  void Erase() { *this = Array(); }

  T& operator()(std::int32_t index) { return items_[Offset(index)]; }
  const T& operator()(std::int32_t index) const { return items_[Offset(index)]; }

  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }

 private:
  const Array& Checked() const {
    if (!allocated_) throw Errors::SubscriptOutOfRange();
    return *this;
  }
  static std::size_t Extent(std::int32_t lower, std::int32_t upper) {
    if (upper < lower) throw Errors::SubscriptOutOfRange();
    return static_cast<std::size_t>(std::int64_t{upper} - lower + 1);
  }
  std::size_t Offset(std::int32_t index) const {
    const auto offset = static_cast<std::size_t>(static_cast<std::int64_t>(index) - lower_);
    if (offset >= items_.size()) throw Errors::SubscriptOutOfRange();
    return offset;
  }

  std::vector<T> items_;
  std::int32_t lower_ = 0;
  bool allocated_ = false;
};

}  // namespace mirelo
