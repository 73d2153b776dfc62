#include "adapters/calc/views/pictures.h"

#include <string_view>

namespace mirelo::calc {

namespace {

struct NamedPicture {
  std::string_view name;
  std::string_view drawing;
};

// Inks: #444 of words, #2e7d32 of what is good, #c62828 of what is bad, #1e66c0 of what points.
constexpr NamedPicture kPictures[] = {
    {"left", R"(<path d="M10.2 3.5L5.7 8L10.2 12.5" stroke="#444" stroke-width="2"/>)"},
    {"all-left",
     R"(<path d="M12.5 3.5L8 8L12.5 12.5M7.5 3.5L3 8L7.5 12.5" stroke="#444" stroke-width="2"/>)"},
    {"right", R"(<path d="M5.8 3.5L10.3 8L5.8 12.5" stroke="#444" stroke-width="2"/>)"},
    {"all-right",
     R"(<path d="M3.5 3.5L8 8L3.5 12.5M8.5 3.5L13 8L8.5 12.5" stroke="#444" stroke-width="2"/>)"},
    {"up", R"(<path d="M3.5 10.2L8 5.7L12.5 10.2" stroke="#444" stroke-width="2"/>)"},
    {"down", R"(<path d="M3.5 5.8L8 10.3L12.5 5.8" stroke="#444" stroke-width="2"/>)"},
    {"delete", R"(<path d="M4 4L12 12M4 12L12 4" stroke="#c62828" stroke-width="2.2"/>)"},
    {"chart", R"(<path d="M3 11h2v3h-2zM6 9h2v5h-2zM9 10h2v4h-2zM12 8h2v6h-2z" fill="#2e7d32"/>)"
              R"(<path d="M3.5 8L7 4.5L10 6L14 2" stroke="#1e66c0" stroke-width="1.6"/>)"
              R"(<path d="M1.5 1.5V14.5H14.5" stroke="#444" stroke-width="1.2"/>)"},
    {"error", R"(<circle cx="8" cy="8" r="7" fill="#c62828"/>)"
              R"(<path d="M5.5 5.5L10.5 10.5M5.5 10.5L10.5 5.5" stroke="#fff" stroke-width="2"/>)"},
    {"send", R"(<path d="M1.5 3.5h13v9.5h-13zM2 4.2L8 9L14 4.2" stroke="#444" stroke-width="1.3"/>)"},
    {"ignore", R"(<path d="M3 3L11 8L3 13zM11.5 3h2v10h-2z" fill="#1e66c0"/>)"},
    {"retry", R"(<path d="M11.5 4.4A5 5 0 1 0 12.8 9.5" stroke="#2e7d32" stroke-width="2"/>)"
              R"(<path d="M14.8 2.2L14.2 8.2L9.2 5.2z" fill="#2e7d32"/>)"},
    {"abort", R"(<path d="M5.1 1H10.9L15 5.1V10.9L10.9 15H5.1L1 10.9V5.1z" fill="#c62828"/>)"
              R"(<path d="M5.8 5.8L10.2 10.2M5.8 10.2L10.2 5.8" stroke="#fff" stroke-width="1.8"/>)"},
};

constexpr std::string_view kBox =
    R"(<rect x="2.5" y="2.5" width="11" height="11" fill="#fff" stroke="#666" stroke-width="1"/>)";
constexpr std::string_view kTick = R"(<path d="M4.8 8.2L7 10.8L11.4 5" stroke="#1e66c0" stroke-width="2"/>)";

// How far a picture stands from the box.
constexpr int kBeside = 20;

std::string_view DrawingOf(std::string_view name) {
  for (const NamedPicture& picture : kPictures) {
    if (picture.name == name) return picture.drawing;
  }
  return {};
}

// A drawing on a field of `width` by 16, shown so high.
std::string Svg(std::string_view drawing, int width, int pixels) {
  constexpr int kField = 16;
  return R"(<svg xmlns="http://www.w3.org/2000/svg" width=")" + std::to_string(pixels * width / kField) +
         R"(" height=")" + std::to_string(pixels) + R"(" viewBox="0 0 )" + std::to_string(width) +
         R"( 16"><g fill="none" stroke-linecap="round" stroke-linejoin="round">)" + std::string(drawing) +
         "</g></svg>";
}

}  // namespace

std::string PictureText(const std::string& name, int pixels) {
  const std::string_view drawing = DrawingOf(name);
  return drawing.empty() ? std::string() : Svg(drawing, 16, pixels);
}

std::string CheckCellText(bool ticked, const std::string& picture, int pixels) {
  std::string drawing(kBox);
  if (ticked) drawing += kTick;
  const std::string_view beside = DrawingOf(picture);
  if (beside.empty()) return Svg(drawing, 16, pixels);
  drawing += "<g transform='translate(" + std::to_string(kBeside) + " 0)'>" + std::string(beside) + "</g>";
  return Svg(drawing, kBeside + 16, pixels);
}

}  // namespace mirelo::calc
