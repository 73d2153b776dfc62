#pragma once

#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

#include "automation/visible_text.h"

namespace mirelo::terminal {

// The program's own words: a literal, or a constant that is known when the program is compiled. An array that
// is filled at run time does not compile, not even one that is seen through a pointer to const.
class OwnWords {
 public:
  template <std::size_t N>
  consteval OwnWords(const char (&words)[N]) : text_(words) {}  // NOLINT: as much a text as a literal is
  template <std::size_t N>
  OwnWords(char (&buffer)[N]) = delete;

  std::string_view Text() const { return text_; }

 private:
  std::string_view text_;
};

// Any other text, which may be from outside. An array is not among them: it counts as own words, so it must
// be a constant.
template <class Text>
concept AnyText = std::convertible_to<const Text&, std::string_view> && !std::is_array_v<Text>;

// Text in the form in which it may leave for a terminal. Whatever comes from outside (servers, files,
// settings, arguments) is in it with its controls made visible; line ends, tabs and colours in it are the
// program's own. There is no way to put a text in as it is, so none can be forgotten.
class ShownText {
 public:
  ShownText() = default;

  ShownText(OwnWords words) : bytes_(words.Text()) {}  // NOLINT: as much a text as they are

  // As one line.
  template <AnyText Text>
  explicit ShownText(const Text& text) : bytes_(Visible(text)) {}

  ShownText& operator+=(const ShownText& more) {
    bytes_ += more.bytes_;
    return *this;
  }
  friend ShownText operator+(ShownText a, const ShownText& b) { return a += b; }
  friend ShownText operator+(ShownText a, OwnWords b) { return a += b; }

  const std::string& Bytes() const { return bytes_; }
  friend bool operator==(const ShownText&, const ShownText&) = default;

 private:
  friend ShownText Lines(std::string_view text);
  friend ShownText Indented(std::string_view text);
  friend ShownText Painted(const ShownText& text, std::string_view parameters);

  std::string bytes_;
};

// Any text, whose line feeds and tabs stay what they are. No line feed is added at its end.
ShownText Lines(std::string_view text);

// The same with the lines behind the first indented, as far as they are not, so that they are seen to belong
// to it and none can pass for a line of the program's own.
ShownText Indented(std::string_view text);

// The text between the sequences that paint it. `parameters` are those of SGR: digits and semicolons, of
// which other characters are left out.
ShownText Painted(const ShownText& text, std::string_view parameters);

}  // namespace mirelo::terminal
