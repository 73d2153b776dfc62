#pragma once

namespace mirelo::terminal {

// A key that a person pressed: one of those without a character, or a character of ASCII.
struct Key {
  enum class Kind { Character, Up, Down, Left, Right, PageUp, PageDown, Home, End };

  Kind kind = Kind::Character;
  char character = '\0';
  friend bool operator==(const Key&, const Key&) = default;
};

}  // namespace mirelo::terminal
