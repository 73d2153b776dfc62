#pragma once

#include <algorithm>
#include <pugixml.hpp>
#include <span>
#include <string>
#include <string_view>

#include "adapters/workbook/xlsx/xml_part.h"

namespace mirelo::workbook {

// A word of the file format, and what a person would call the thing that is lost. An empty meaning is no
// loss: the thing is kept, or there is nothing to lose.
struct PartWord {
  std::string_view word;
  std::string_view meaning;
  bool is_work = false;  // see Loss
};

struct PartMeaning {
  std::string text;
  bool is_work = false;
};

// What a person would call the thing. For a word that is not in the list, the word itself in a phrase.
inline PartMeaning MeaningOf(std::span<const PartWord> words, std::string_view word) {
  const auto found =
      std::find_if(words.begin(), words.end(), [&](const PartWord& known) { return known.word == word; });
  if (found == words.end()) return {"what the file calls \"" + std::string(word) + "\""};
  return {std::string(found->meaning), found->is_work};
}

// Calls report(meaning) for the child elements that mean a loss. One that holds nothing is passed over.
template <class Report>
void ReportElements(pugi::xml_node parent, std::span<const PartWord> words, Report&& report) {
  for (const pugi::xml_node child : parent.children()) {
    const bool is_empty = !child.first_child() && !child.first_attribute();
    if (child.type() != pugi::node_element || is_empty) continue;
    const PartMeaning meaning = MeaningOf(words, LocalName(child));
    if (!meaning.text.empty()) report(meaning);
  }
}

}  // namespace mirelo::workbook
