#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "automation/visible_text.h"

namespace mirelo::terminal {

// Text in the form in which it may leave for a terminal. Whatever comes from outside (servers, files,
// settings, arguments) is in it with its controls made visible; line ends, tabs and colours in it are the
// program's own. There is no way to put a text in as it is, so none can be forgotten.
class ShownText {
 public:
  ShownText() = default;

  // The program's own words: a literal.
  template <std::size_t N>
  ShownText(const char (&words)[N]) : bytes_(words) {}  // NOLINT: as much a text as a literal is
  template <std::size_t N>
  ShownText(char (&buffer)[N]) = delete;

  // Any text, as one line.
  explicit ShownText(std::string_view text) : bytes_(Visible(text)) {}

  ShownText& operator+=(const ShownText& more) {
    bytes_ += more.bytes_;
    return *this;
  }
  friend ShownText operator+(ShownText a, const ShownText& b) { return a += b; }

  const std::string& Bytes() const { return bytes_; }
  friend bool operator==(const ShownText&, const ShownText&) = default;

 private:
  friend ShownText Lines(std::string_view text);
  friend ShownText Indented(std::string_view text);
  friend ShownText Painted(const ShownText& text, std::string_view parameters);

  std::string bytes_;
};

// Any text of several lines, without an end behind the last unless it has one: line feeds and tabs are
// layout.
ShownText Lines(std::string_view text);

// The same with the lines behind the first indented, as far as they are not, so that they are seen to belong
// to it and none can pass for a line of the program's own.
ShownText Indented(std::string_view text);

// The text between the sequences that paint it. `parameters` are those of SGR: digits and semicolons, of
// which other characters are left out.
ShownText Painted(const ShownText& text, std::string_view parameters);

}  // namespace mirelo::terminal
