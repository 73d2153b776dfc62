#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace mirelo::app {

// What command lines are checked for.

// A ticker is sent as it is, between commas and brackets, so it holds none of them and no blank.
inline CLI::Validator IsTicker() {
  return CLI::Validator(
      [](const std::string& ticker) {
        return !ticker.empty() && ticker.find_first_of(", \t\r\n()<>") == std::string::npos
                   ? std::string()
                   : "a ticker holds no blank, comma or bracket: \"" + ticker + "\"";
      },
      "");
}

// For options that take the place of a setting: the value is not empty, as an empty text would leave the
// setting in force.
inline CLI::Validator IsNotEmpty() {
  return CLI::Validator(
      [](const std::string& text) {
        return text.empty() ? std::string("the value is empty") : std::string();
      },
      "");
}

}  // namespace mirelo::app
