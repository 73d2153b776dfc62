#include "xml_mutator.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

namespace mirelo::fuzzing {

namespace {

constexpr std::size_t kSlack = 64;
constexpr std::size_t kLongestPiece = 4096;

constexpr std::array kValues = std::to_array<std::string_view>({
    "",
    "0",
    "-1",
    "1",
    "2",
    "3",
    "255",
    "16384",
    "16385",
    "1048576",
    "1048577",
    "2147483648",
    "4294967296",
    "-0",
    "1e308",
    "1e309",
    "nan",
    "inf",
    "0.1",
    "60",
    "2958465.9999999",
    "A1",
    "B2",
    "XFD1048576",
    "A1:B2",
    "ZZZ9",
    "s",
    "b",
    "e",
    "d",
    "n",
    "str",
    "inlineStr",
    "true",
    "false",
    "hidden",
    "frozen",
    "#N/A",
    "#SPILL!",
    "_x0041_",
    "_x0000_",
    "_xD83D_",
    "&amp;",
    "&#65535;",
    "\xFF\xFE",
    "..",
    "../../x",
    "/xl/workbook.xml",
    "worksheet",
    "styles",
    "theme",
    "External",
    "General",
    "@",
    "m/d/yyyy",
    "[h]:mm;@",
    "0.00E+00",
    "#,##0,,",
    "\\",
    "[Red",
    "FFFF0000",
    "centerContinuous",
    "solid",
    "slantDashDot",
    "2011-01-20T25:00:00",
    "1900-02-29",
    "cellIs",
    "between",
    "greaterThan",
    "B2:B9 D4",
    "A:A 3:5",
    "\"x\"",
    "TRUE",
    "-1.5",
    "Note",
    "#ffffe1",
    "width:96pt;height:1e9in",
    "width:0.1px;height:-1cm",
    "bottomRight",
    "comments",
    "vmlDrawing",
    "Sheet1",
    "'Prices'!$A$1:$A$5",
    "Prices!#REF!",
    "lineChart",
    "standard",
    "clustered",
    "col",
    "edge",
    "outer",
    "diamond",
    "picture",
    "sysDot",
    "dbl",
    "window",
    "accent1",
    "16200000",
    "50000",
    "28575",
    "oneCell",
    "drawing",
    "chart",
});

std::size_t Below(std::size_t bound, std::mt19937& random) { return bound == 0 ? 0 : random() % bound; }

// The place of a random `mark`; npos when there is none.
std::size_t PlaceOf(const std::string& text, char mark, std::mt19937& random) {
  const std::size_t from = Below(text.size(), random);
  const std::size_t behind = text.find(mark, from);
  return behind != std::string::npos ? behind : text.find(mark);
}

// A stretch from one tag to another.
std::string_view RandomPiece(const std::string& text, std::mt19937& random) {
  const std::size_t start = PlaceOf(text, '<', random);
  if (start == std::string::npos) return {};
  std::size_t end = start;
  for (std::size_t tags = 1 + Below(6, random); tags > 0 && end != std::string::npos; --tags)
    end = text.find('<', end + 1);
  return std::string_view(text).substr(start, std::min(end, text.size()) - start).substr(0, kLongestPiece);
}

void RepeatPiece(std::string& text, std::mt19937& random) {
  const std::string piece(RandomPiece(text, random));
  const std::size_t place = PlaceOf(text, '<', random);
  if (place != std::string::npos) text.insert(place, piece);
}

void DropPiece(std::string& text, std::mt19937& random) {
  const std::string_view piece = RandomPiece(text, random);
  if (!piece.empty()) text.erase(static_cast<std::size_t>(piece.data() - text.data()), piece.size());
}

// Replaces what stands between a random `open` and the next `close`.
void ReplaceValue(std::string& text, char open, char close, std::mt19937& random) {
  const std::size_t start = PlaceOf(text, open, random);
  if (start == std::string::npos) return;
  const std::size_t end = text.find(close, start + 1);
  if (end == std::string::npos) return;
  text.replace(start + 1, end - start - 1, kValues[Below(kValues.size(), random)]);
}

}  // namespace

void MutateXml(std::string& text, std::mt19937& random) {
  switch (Below(8, random)) {
    case 0:
      return RepeatPiece(text, random);
    case 1:
      return DropPiece(text, random);
    case 2:
      return MutateBytes(text, random);
    case 3:
    case 4:
      return ReplaceValue(text, '>', '<', random);
    default:
      return ReplaceValue(text, '"', '"', random);
  }
}

void MutateBytes(std::string& text, std::mt19937& random) {
  // A window of the text, so that a large part is not changed at its start alone.
  const std::size_t start = Below(text.size() + 1, random);
  const std::size_t size = std::min<std::size_t>(text.size() - start, 1 + Below(256, random));
  std::string window = text.substr(start, size);
  window.resize(size + kSlack);
  window.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(window.data()), size, window.size()));
  text.replace(start, size, window);
}

}  // namespace mirelo::fuzzing
