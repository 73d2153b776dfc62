#pragma once

#include <span>
#include <string_view>

namespace mirelo::quotetracker {

// One of the providers from which quotes can be had: its definition file and the name that people know.
struct Source {
  std::string_view file;
  std::string_view name;
};

// Made-up providers of Level I quotes. Their names have all that a client must cope with in such a list:
// brackets, blanks at the front, characters beyond ASCII in the ANSI code page, two files of one name.
std::span<const Source> Level1Sources();

}  // namespace mirelo::quotetracker
