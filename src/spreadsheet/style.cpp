#include "spreadsheet/style.h"

#include <functional>

namespace mirelo::spreadsheet {

namespace {

class Mixer {
 public:
  template <class T>
  void operator()(const T& value) {
    sum_ ^= std::hash<T>{}(value) + 0x9E3779B97F4A7C15u + (sum_ << 6) + (sum_ >> 2);
  }
  std::size_t sum() const { return sum_; }

 private:
  std::size_t sum_ = 0;
};

}  // namespace

std::size_t Hash(const Style& style) {
  Mixer mix;
  mix(style.number_format);
  mix(style.font.name);
  mix(style.font.size);
  mix(style.font.bold);
  mix(style.font.italic);
  mix(style.font.color);
  mix(style.fill.pattern);
  mix(style.fill.foreground);
  mix(style.alignment.horizontal);
  for (const BorderLine& edge : style.border.edges) {
    mix(edge.line);
    mix(edge.color);
  }
  return mix.sum();
}

}  // namespace mirelo::spreadsheet
