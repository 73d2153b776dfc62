#include "adapters/windows/views/lettering.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "automation/wide_text.h"
#include "forms/layout/measures.h"
#include "host/window_placement.h"

namespace mirelo::windows {

namespace {

constexpr int kDesignedDots = 96;

// To measure with. It lies on no window.
class ScreenContext {
 public:
  explicit ScreenContext(HFONT font) : context_(::CreateCompatibleDC(nullptr)) {
    former_ = ::SelectObject(context_, font);
  }
  ~ScreenContext() {
    ::SelectObject(context_, former_);
    ::DeleteDC(context_);
  }
  ScreenContext(const ScreenContext&) = delete;
  ScreenContext& operator=(const ScreenContext&) = delete;
  HDC get() const { return context_; }

 private:
  HDC context_;
  HGDIOBJ former_;
};

// The user's font, which Windows tells as high as it is on the screen that all windows were made for.
LOGFONTW MessageFont() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  return metrics.lfMessageFont;
}

unsigned SystemDots() {
  const HDC screen = ::GetDC(nullptr);
  const int dots = ::GetDeviceCaps(screen, LOGPIXELSY);
  ::ReleaseDC(nullptr, screen);
  return dots > 0 ? static_cast<unsigned>(dots) : kDesignedDots;
}

}  // namespace

Lettering::Lettering(unsigned dots_per_inch) : dots_per_inch_(dots_per_inch) {
  LOGFONTW look = MessageFont();
  look.lfHeight = ::MulDiv(look.lfHeight, static_cast<int>(dots_per_inch), static_cast<int>(SystemDots()));
  font_ = ::CreateFontIndirectW(&look);
  look.lfWeight = FW_BOLD;
  bold_font_ = ::CreateFontIndirectW(&look);
  const ScreenContext context(font_);
  TEXTMETRICW metrics{};
  ::GetTextMetricsW(context.get(), &metrics);
  letter_width_ = std::max<std::int32_t>(1, metrics.tmAveCharWidth);
  letter_height_ = std::max<std::int32_t>(1, metrics.tmHeight);
}

Lettering::~Lettering() {
  ::DeleteObject(font_);
  ::DeleteObject(bold_font_);
}

std::int32_t Lettering::Scaled(std::int32_t pixels) const {
  return ::MulDiv(pixels, static_cast<int>(dots_per_inch_), kDesignedDots);
}

double Lettering::PixelsToTheTwip() const {
  return forms::layout::GrowthFor(letter_width_) / host::kTwipsPerPixel;
}

std::int32_t Lettering::PixelsOf(std::int32_t twips) const {
  return static_cast<std::int32_t>(std::lround(twips * PixelsToTheTwip()));
}

std::int32_t Lettering::TwipsOf(std::int32_t pixels) const {
  return static_cast<std::int32_t>(std::lround(pixels / PixelsToTheTwip()));
}

forms::layout::Extent Lettering::ExtentOf(const std::string& text, bool bold, bool marks) const {
  constexpr std::size_t kMostTexts = 1000;
  const auto known = known_.find({text, bold, marks});
  if (known != known_.end()) return known->second;
  if (known_.size() >= kMostTexts) known_.clear();
  return known_[{text, bold, marks}] = Measure(text, bold, marks);
}

forms::layout::Extent Lettering::Measure(const std::string& text, bool bold, bool marks) const {
  const ScreenContext context(bold ? bold_font_ : font_);
  const std::wstring wide = WideText(text);
  RECT room{};
  ::DrawTextW(context.get(), wide.c_str(), -1, &room,
              static_cast<UINT>(DT_CALCRECT | (marks ? 0 : DT_NOPREFIX)));
  return {room.right - room.left, std::max<std::int32_t>(room.bottom - room.top, letter_height_)};
}

// Windows knows it of each window since one of its later versions; before, all screens are alike.
unsigned DotsPerInch(HWND window) {
  using Ask = UINT(WINAPI*)(HWND);
  static const auto ask = reinterpret_cast<Ask>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
  const UINT dots = ask == nullptr ? 0 : ask(window);
  return dots == 0 ? SystemDots() : dots;
}

}  // namespace mirelo::windows
