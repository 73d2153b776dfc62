#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo::libreoffice {

// What a file in parts (.xlsx, .ods) holds that one which LibreOffice has stored of it does not hold any
// more: a sentence for each kind of parts. What nobody misses, such as a list of the order in which cells are
// calculated, is none of it.
std::vector<std::string> SentencesOfLostParts(const std::vector<std::string>& parts_before,
                                              const std::vector<std::string>& parts_after);

}  // namespace mirelo::libreoffice
