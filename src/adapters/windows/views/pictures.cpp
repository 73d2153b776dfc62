#include "adapters/windows/views/pictures.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace mirelo::windows {

namespace {

// What pictures are drawn of, on a field of 16 by 16.
struct Shape {
  enum class Kind { Lines, Polygon, Ellipse };
  struct Point {
    double x = 0;
    double y = 0;
  };
  Kind kind;
  COLORREF ink;
  double width;               // of the pen; of no meaning to what is filled
  std::vector<Point> points;  // of an ellipse the corners of its box
};

struct NamedPicture {
  std::string_view name;
  std::vector<Shape> shapes;
};

constexpr COLORREF kLine = RGB(0x44, 0x44, 0x44);
constexpr COLORREF kGood = RGB(0x2E, 0x7D, 0x32);
constexpr COLORREF kBad = RGB(0xC6, 0x28, 0x28);
constexpr COLORREF kAccent = RGB(0x1E, 0x66, 0xC0);
constexpr COLORREF kWhite = RGB(0xFF, 0xFF, 0xFF);

Shape Lines(COLORREF ink, double width, std::vector<Shape::Point> points) {
  return {Shape::Kind::Lines, ink, width, std::move(points)};
}
Shape Polygon(COLORREF ink, std::vector<Shape::Point> points) {
  return {Shape::Kind::Polygon, ink, 0, std::move(points)};
}
Shape Ellipse(COLORREF ink, std::vector<Shape::Point> corners) {
  return {Shape::Kind::Ellipse, ink, 0, std::move(corners)};
}

const std::vector<NamedPicture>& AllPictures() {
  static const std::vector<NamedPicture> all = {
      {"left", {Lines(kLine, 2, {{10.2, 3.5}, {5.7, 8}, {10.2, 12.5}})}},
      {"all-left",
       {Lines(kLine, 2, {{12.5, 3.5}, {8, 8}, {12.5, 12.5}}),
        Lines(kLine, 2, {{7.5, 3.5}, {3, 8}, {7.5, 12.5}})}},
      {"right", {Lines(kLine, 2, {{5.8, 3.5}, {10.3, 8}, {5.8, 12.5}})}},
      {"all-right",
       {Lines(kLine, 2, {{3.5, 3.5}, {8, 8}, {3.5, 12.5}}),
        Lines(kLine, 2, {{8.5, 3.5}, {13, 8}, {8.5, 12.5}})}},
      {"up", {Lines(kLine, 2, {{3.5, 10.2}, {8, 5.7}, {12.5, 10.2}})}},
      {"down", {Lines(kLine, 2, {{3.5, 5.8}, {8, 10.3}, {12.5, 5.8}})}},
      {"delete", {Lines(kBad, 2.2, {{4, 4}, {12, 12}}), Lines(kBad, 2.2, {{4, 12}, {12, 4}})}},
      {"chart",
       {Polygon(kGood, {{3, 11}, {5, 11}, {5, 14}, {3, 14}}),
        Polygon(kGood, {{6, 9}, {8, 9}, {8, 14}, {6, 14}}),
        Polygon(kGood, {{9, 10}, {11, 10}, {11, 14}, {9, 14}}),
        Polygon(kGood, {{12, 8}, {14, 8}, {14, 14}, {12, 14}}),
        Lines(kAccent, 1.6, {{3.5, 8}, {7, 4.5}, {10, 6}, {14, 2}}),
        Lines(kLine, 1.2, {{1.5, 1.5}, {1.5, 14.5}, {14.5, 14.5}})}},
      {"error",
       {Ellipse(kBad, {{1, 1}, {15, 15}}), Lines(kWhite, 2, {{5.5, 5.5}, {10.5, 10.5}}),
        Lines(kWhite, 2, {{5.5, 10.5}, {10.5, 5.5}})}},
      {"send",
       {Lines(kLine, 1.3, {{1.5, 3.5}, {14.5, 3.5}, {14.5, 13}, {1.5, 13}, {1.5, 3.5}}),
        Lines(kLine, 1.3, {{2, 4.2}, {8, 9}, {14, 4.2}})}},
      {"ignore",
       {Polygon(kAccent, {{3, 3}, {11, 8}, {3, 13}}),
        Polygon(kAccent, {{11.5, 3}, {13.5, 3}, {13.5, 13}, {11.5, 13}})}},
      {"retry",
       {Lines(kGood, 2,
              {{11.5, 4.4},
               {8.6, 3.1},
               {5.4, 3.8},
               {3.4, 6.2},
               {3.2, 9.2},
               {4.9, 11.8},
               {7.8, 13},
               {10.7, 12.2},
               {12.8, 9.5}}),
        Polygon(kGood, {{14.8, 2.2}, {14.2, 8.2}, {9.2, 5.2}})}},
      {"abort",
       {Polygon(kBad,
                {{5.1, 1}, {10.9, 1}, {15, 5.1}, {15, 10.9}, {10.9, 15}, {5.1, 15}, {1, 10.9}, {1, 5.1}}),
        Lines(kWhite, 1.8, {{5.8, 5.8}, {10.2, 10.2}}), Lines(kWhite, 1.8, {{5.8, 10.2}, {10.2, 5.8}})}},
  };
  return all;
}

constexpr int kField = 16;
constexpr int kFiner = 4;  // pictures are drawn larger, and then each square of pixels is one
constexpr std::uint32_t kNothing = 0x00FF00FF;

// A picture in memory whose pixels can be read, from above.
class Canvas {
 public:
  explicit Canvas(int side) {
    BITMAPINFO look{};
    look.bmiHeader.biSize = sizeof look.bmiHeader;
    look.bmiHeader.biWidth = side;
    look.bmiHeader.biHeight = -side;
    look.bmiHeader.biPlanes = 1;
    look.bmiHeader.biBitCount = 32;
    void* pixels = nullptr;
    bitmap_ = ::CreateDIBSection(nullptr, &look, DIB_RGB_COLORS, &pixels, nullptr, 0);
    pixels_ = static_cast<std::uint32_t*>(pixels);
  }
  ~Canvas() { ::DeleteObject(bitmap_); }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  HBITMAP bitmap() const { return bitmap_; }
  std::uint32_t* pixels() const { return pixels_; }

 private:
  HBITMAP bitmap_ = nullptr;
  std::uint32_t* pixels_ = nullptr;
};

HPEN PenFor(const Shape& shape, double scale) {
  const LOGBRUSH brush{BS_SOLID, shape.ink, 0};
  if (shape.kind != Shape::Kind::Lines) return ::CreatePen(PS_NULL, 0, 0);
  return ::ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_ROUND | PS_JOIN_ROUND,
                        static_cast<DWORD>(std::lround(shape.width * scale)), &brush, 0, nullptr);
}

void Draw(HDC context, const Shape& shape, double scale) {
  const HPEN pen = PenFor(shape, scale);
  const HBRUSH brush = ::CreateSolidBrush(shape.ink);
  const HGDIOBJ former_pen = ::SelectObject(context, pen);
  const HGDIOBJ former_brush = ::SelectObject(context, brush);
  std::vector<POINT> points;
  for (const auto& point : shape.points) {
    points.push_back(
        {static_cast<LONG>(std::lround(point.x * scale)), static_cast<LONG>(std::lround(point.y * scale))});
  }
  switch (shape.kind) {
    case Shape::Kind::Lines:
      ::Polyline(context, points.data(), static_cast<int>(points.size()));
      break;
    case Shape::Kind::Polygon:
      ::Polygon(context, points.data(), static_cast<int>(points.size()));
      break;
    case Shape::Kind::Ellipse:
      ::Ellipse(context, points[0].x, points[0].y, points[1].x, points[1].y);
      break;
  }
  ::SelectObject(context, former_brush);
  ::SelectObject(context, former_pen);
  ::DeleteObject(brush);
  ::DeleteObject(pen);
}

void DrawLarge(const std::vector<Shape>& shapes, const Canvas& canvas, int side) {
  for (int pixel = 0; pixel < side * side; ++pixel) canvas.pixels()[pixel] = kNothing;
  const HDC context = ::CreateCompatibleDC(nullptr);
  const HGDIOBJ former = ::SelectObject(context, canvas.bitmap());
  for (const Shape& shape : shapes) Draw(context, shape, static_cast<double>(side) / kField);
  ::GdiFlush();
  ::SelectObject(context, former);
  ::DeleteDC(context);
}

// The mean of a square of pixels: it covers as much as is drawn of it.
std::uint32_t MeanOf(const std::uint32_t* large, int side, int left, int top) {
  std::array<std::uint32_t, 3> sums{};
  std::uint32_t drawn = 0;
  for (int y = 0; y < kFiner; ++y) {
    for (int x = 0; x < kFiner; ++x) {
      const std::uint32_t pixel = large[(top + y) * side + left + x] & 0xFFFFFF;
      if (pixel == kNothing) continue;
      ++drawn;
      for (std::size_t part = 0; part < sums.size(); ++part) sums[part] += pixel >> (8 * part) & 0xFF;
    }
  }
  if (drawn == 0) return 0;
  const std::uint32_t covered = drawn * 0xFF / (kFiner * kFiner);
  return covered << 24 | sums[2] / drawn << 16 | sums[1] / drawn << 8 | sums[0] / drawn;
}

void Shrink(const Canvas& large, const Canvas& small_one, int pixels) {
  for (int y = 0; y < pixels; ++y) {
    for (int x = 0; x < pixels; ++x) {
      small_one.pixels()[y * pixels + x] = MeanOf(large.pixels(), pixels * kFiner, x * kFiner, y * kFiner);
    }
  }
}

// What is not drawn at all, of which Windows makes the faint picture of a button that cannot be pressed. A
// row of it is an even number of bytes.
HBITMAP MaskOf(const Canvas& seen, int pixels) {
  constexpr std::uint32_t kHalf = 0x80;
  const auto row = (static_cast<std::size_t>(pixels) + 15) / 16 * 2;
  std::vector<std::uint8_t> bits(row * static_cast<std::size_t>(pixels), 0);
  for (int y = 0; y < pixels; ++y) {
    for (int x = 0; x < pixels; ++x) {
      if (seen.pixels()[y * pixels + x] >> 24 >= kHalf) continue;
      auto& eight = bits[row * static_cast<std::size_t>(y) + static_cast<std::size_t>(x / 8)];
      eight = static_cast<std::uint8_t>(eight | 0x80 >> x % 8);
    }
  }
  return ::CreateBitmap(pixels, pixels, 1, 1, bits.data());
}

}  // namespace

Icon PictureIcon(const std::string& name, int pixels) {
  for (const NamedPicture& picture : AllPictures()) {
    if (picture.name != name || pixels < 1) continue;
    const Canvas large(pixels * kFiner);
    const Canvas seen(pixels);
    if (large.pixels() == nullptr || seen.pixels() == nullptr) return Icon();
    DrawLarge(picture.shapes, large, pixels * kFiner);
    Shrink(large, seen, pixels);
    const HBITMAP mask = MaskOf(seen, pixels);
    ICONINFO look{TRUE, 0, 0, mask, seen.bitmap()};
    Icon icon(::CreateIconIndirect(&look));
    ::DeleteObject(mask);
    return icon;
  }
  return Icon();
}

}  // namespace mirelo::windows
