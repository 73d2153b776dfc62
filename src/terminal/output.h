#pragma once

#include <concepts>
#include <string>
#include <string_view>

#include "terminal/shown_text.h"

namespace mirelo::terminal {

// Where everything that the program prints is written to, texts for people and data for other programs;
// nothing may be printed past it. A literal is the program's own and stands as it is, and so does a
// ShownText. Any other text may be from outside and is made visible, its line ends too:
//
//   Err() << "error: there is no sheet " << name << "\n";
class Output {
 public:
  Output() = default;
  virtual ~Output() = default;
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  Output& operator<<(OwnWords words) {
    Put(words.Text());
    return *this;
  }
  Output& operator<<(const ShownText& text) {
    Put(text.Bytes());
    return *this;
  }
  template <AnyText Text>
  Output& operator<<(const Text& text) {
    Put(Visible(text));
    return *this;
  }
  template <std::integral Number>
  Output& operator<<(Number number) {
    Put(std::to_string(number));
    return *this;
  }
  Output& operator<<(char) = delete;

  // Writes out what is buffered.
  virtual void Flush() {}

 private:
  virtual void Put(std::string_view bytes) = 0;
};

// Keeps what is written, for tests.
class TextOutput : public Output {
 public:
  const std::string& Text() const { return text_; }

 private:
  void Put(std::string_view bytes) override { text_ += bytes; }

  std::string text_;
};

}  // namespace mirelo::terminal
