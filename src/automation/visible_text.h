#pragma once

#include <string>
#include <string_view>

namespace mirelo {

// Texts of other people's making, fit to be shown.
//
// Some characters are obeyed and not shown: controls of both sets (they colour, move, rename and ring), marks
// that turn the direction of what follows, ends of lines, and characters of no width that make two names look
// alike. Here they are written with letters:
//
//   \n \r \t \0   the line feed, carriage return, tab, and the character 0
//   \u001B        any other, in four hexadecimal digits
//   \U000E0041    one beyond those, in eight
//   \xFF          a byte that is no UTF-8, in two
//
// Joiners inside words and pictures are left alone.

// For people: to be looked at, not to be read back, so a backslash stays as it is. Visible of a visible text
// is that text.
std::string Visible(std::string_view text);

// The same for a text of several lines: line feeds and tabs stay, "\r\n" becomes a line feed.
std::string VisibleLines(std::string_view text);

// For programs: a backslash is written as \\, so that Unescaped gives back exactly what was escaped.
std::string Escaped(std::string_view text);

// Error 5 where a backslash begins none of these.
std::string Unescaped(std::string_view escaped);

// JSON in which the characters above are escaped as JSON has it. Between its texts there is none of them.
std::string VisibleJson(std::string_view json);

}  // namespace mirelo
