// How the fuzzer changes an input: it takes the archive apart, changes a part and packs it again, since
// hardly any change of packed bytes gets past the archive's checksums.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "seeds.h"
#include "workbook/package_builder.h"
#include "xml_mutator.h"

namespace mirelo::fuzzing {
namespace {

using testing::Parts;

constexpr std::size_t kLargestPart = 64 << 10;

Parts PartsOf(const std::uint8_t* data, std::size_t size) {
  return testing::Unzip({reinterpret_cast<const char*>(data), size});
}

std::string& RandomPart(Parts& parts, std::mt19937& random) {
  return std::next(parts.begin(), static_cast<std::ptrdiff_t>(random() % parts.size()))->second;
}

// Most of what a reader does is done with sheets, styles and the workbook.
std::string& LikelyPart(Parts& parts, std::mt19937& random) {
  constexpr std::string_view kLikely[] = {"xl/worksheets/sheet1.xml", "xl/styles.xml",
                                          "xl/workbook.xml",          "xl/sharedStrings.xml",
                                          "xl/comments1.xml",         "xl/drawings/vmlDrawing1.vml",
                                          "xl/drawings/drawing1.xml", "xl/charts/chart1.xml"};
  const auto found = parts.find(std::string(kLikely[random() % std::size(kLikely)]));
  return found != parts.end() && random() % 4 != 0 ? found->second : RandomPart(parts, random);
}

// Makes a part of a few bytes that unpack to many more.
void Inflate(std::string& part, std::mt19937& random) {
  const std::size_t place = part.empty() ? 0 : random() % part.size();
  part.insert(place, std::size_t{1} << (10 + random() % 11), " <=>\"\0"[random() % 6]);
}

void Mutate(Parts& parts, std::mt19937& random) {
  for (auto changes = 1 + random() % 4; changes > 0; --changes) {
    std::string& part = LikelyPart(parts, random);
    MutateXml(part, random);
    if (part.size() > kLargestPart) part.resize(kLargestPart);
  }
  if (random() % 100 == 0) Inflate(RandomPart(parts, random), random);
  if (random() % 50 == 0)
    parts.erase(std::next(parts.begin(), static_cast<std::ptrdiff_t>(random() % parts.size())));
}

// Packs into the fuzzer's buffer; 0 when it does not fit, or a mutation of the archive itself left names that
// no archive takes.
std::size_t Pack(const Parts& parts, std::uint8_t* data, std::size_t max_size) {
  if (parts.empty()) return 0;
  try {
    const std::vector<char> bytes = testing::Zip(parts);
    if (bytes.size() > max_size) return 0;
    std::copy(bytes.begin(), bytes.end(), reinterpret_cast<char*>(data));
    return bytes.size();
  } catch (const std::runtime_error&) {
    return 0;
  }
}

}  // namespace
}  // namespace mirelo::fuzzing

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned int seed) {
  using namespace mirelo::fuzzing;
  std::mt19937 random(seed);
  if (size > 0 && random() % 20 == 0) return LLVMFuzzerMutate(data, size, max_size);

  auto parts = PartsOf(data, size);
  const bool is_new = parts.empty() || random() % 500 == 0;
  if (is_new) parts = Seeds()[random() % Seeds().size()];
  if (!is_new || size > 0) Mutate(parts, random);
  const std::size_t packed = Pack(parts, data, max_size);
  return packed != 0 ? packed : LLVMFuzzerMutate(data, size, max_size);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const std::uint8_t* data1, std::size_t size1,
                                                 const std::uint8_t* data2, std::size_t size2,
                                                 std::uint8_t* out, std::size_t max_out_size,
                                                 unsigned int seed) {
  using namespace mirelo::fuzzing;
  std::mt19937 random(seed);
  auto parts = PartsOf(data1, size1);
  for (const auto& [name, text] : PartsOf(data2, size2)) {
    if (random() % 3 == 0) parts[name] = text;
  }
  return Pack(parts, out, max_out_size);
}
