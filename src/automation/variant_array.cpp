#include <limits>

#include "automation/runtime_error.h"
#include "automation/variant.h"

namespace mirelo {

namespace {

// Elements between two bounds, both included.
std::size_t Extent(std::int32_t lower, std::int32_t upper) {
  if (upper < lower) throw Errors::SubscriptOutOfRange();
  return static_cast<std::size_t>(std::int64_t{upper} - lower + 1);
}

std::size_t CheckedProduct(std::size_t rows, std::size_t columns) {
  if (columns > std::vector<Variant>().max_size() / rows) throw Errors::OutOfMemory();
  return rows * columns;
}

}  // namespace

VariantArray::VariantArray(std::int32_t lower, std::int32_t upper)
    : bounds_{{lower, upper}, {}}, items_(Extent(lower, upper)) {}

VariantArray::VariantArray(std::int32_t lower1, std::int32_t upper1, std::int32_t lower2, std::int32_t upper2)
    : dimensions_(2),
      bounds_{{lower1, upper1}, {lower2, upper2}},
      items_(CheckedProduct(Extent(lower1, upper1), Extent(lower2, upper2))) {}

VariantArray VariantArray::OfTexts(const std::vector<std::string>& texts) {
  VariantArray array;
  array.items_.assign(texts.begin(), texts.end());
  array.bounds_[0].upper = static_cast<std::int32_t>(texts.size()) - 1;
  return array;
}

std::int32_t VariantArray::LBound(int dimension) const {
  if (dimension < 1 || dimension > dimensions_) throw Errors::SubscriptOutOfRange();
  return bounds_[dimension - 1].lower;
}

std::int32_t VariantArray::UBound(int dimension) const {
  if (dimension < 1 || dimension > dimensions_) throw Errors::SubscriptOutOfRange();
  return bounds_[dimension - 1].upper;
}

void VariantArray::ReDimPreserve(std::int32_t upper) {
  if (dimensions_ != 1) throw Errors::SubscriptOutOfRange();
  items_.resize(Extent(bounds_[0].lower, upper));
  bounds_[0].upper = upper;
}

void VariantArray::RaiseBadIndex() { throw Errors::SubscriptOutOfRange(); }

}  // namespace mirelo
