#pragma once

#include <cstddef>
#include <string>

namespace mirelo::calc {

// A caption as the office has it: "~" in place of "&" marks the letter that is pressed with Alt. "&&" is one
// "&".
inline std::string WithMarkedLetter(const std::string& caption) {
  std::string marked;
  for (std::size_t at = 0; at < caption.size(); ++at) {
    if (caption[at] != '&') {
      marked += caption[at];
    } else if (at + 1 < caption.size() && caption[at + 1] == '&') {
      marked += caption[at++];
    } else {
      marked += '~';
    }
  }
  return marked;
}

}  // namespace mirelo::calc
