#include "libreoffice/documents/lost_parts.h"

#include <algorithm>
#include <array>

namespace mirelo::libreoffice {

namespace {

struct KindOfParts {
  std::string_view start;  // of a part's name
  const char* what;        // its contents, for people; null for what nobody misses
};

// The first one that fits counts.
constexpr std::array kKinds{
    KindOfParts{"xl/calcChain", nullptr},
    KindOfParts{"xl/theme/", nullptr},
    KindOfParts{"xl/printerSettings/", nullptr},
    KindOfParts{"xl/sharedStrings", nullptr},
    KindOfParts{"xl/charts/style", nullptr},
    KindOfParts{"xl/charts/colors", nullptr},
    KindOfParts{"xl/metadata", nullptr},
    KindOfParts{"docProps/", nullptr},
    KindOfParts{"[Content_Types]", nullptr},
    KindOfParts{"xl/vbaProject", "macros"},
    KindOfParts{"xl/slicer", "slicers"},
    KindOfParts{"xl/timeline", "timelines"},
    KindOfParts{"xl/threadedComments/", "conversations in comments"},
    KindOfParts{"xl/persons/", nullptr},
    KindOfParts{"xl/activeX/", "controls"},
    KindOfParts{"xl/ctrlProps/", "controls"},
    KindOfParts{"xl/diagrams/", "diagrams of shapes and texts"},
    KindOfParts{"xl/charts/chartEx", "charts of newer kinds"},
    KindOfParts{"xl/connections", "connections to data"},
    KindOfParts{"xl/queryTables/", "connections to data"},
    KindOfParts{"xl/model/", "a data model"},
    KindOfParts{"xl/richData/", "linked kinds of data"},
    KindOfParts{"xl/pivot", "pivot tables"},
    KindOfParts{"xl/tables/", "tables with names of their own"},
    KindOfParts{"xl/externalLinks/", "links to other workbooks"},
    KindOfParts{"xl/media/", "pictures"},
    KindOfParts{"xl/chartsheets/", "chart sheets, which become worksheets"},
    KindOfParts{"xl/embeddings/", "documents of other programs"},
    KindOfParts{"customXml/", "data of other programs"},
    KindOfParts{"_xmlsignatures/", "a digital signature"},
    KindOfParts{"META-INF/documentsignatures", "a digital signature"},
    KindOfParts{"META-INF/macrosignatures", "a digital signature of macros"},
    KindOfParts{"META-INF/", nullptr},
    KindOfParts{"Versions/", "older versions of the document"},
    KindOfParts{"VersionList", "older versions of the document"},
    KindOfParts{"Basic/", "macros"},
    KindOfParts{"Scripts/", "macros"},
    KindOfParts{"Dialogs/", "dialogs of macros"},
    KindOfParts{"Pictures/", "pictures"},
    KindOfParts{"Object ", "charts or documents of other programs"},
    KindOfParts{"Thumbnails/", nullptr},
    KindOfParts{"Configurations2/", nullptr},
    KindOfParts{"ObjectReplacements/", nullptr},
    KindOfParts{"manifest.rdf", nullptr},
    KindOfParts{"layout-cache", nullptr},
    KindOfParts{"current.xml", nullptr},
};

// The relations between parts go where these go, and folders are no parts.
bool IsNone(std::string_view part) {
  return part.empty() || part.ends_with('/') || part.find("_rels/") != std::string_view::npos;
}

const KindOfParts* KindOf(std::string_view part) {
  const auto* const found =
      std::ranges::find_if(kKinds, [&](const KindOfParts& kind) { return part.starts_with(kind.start); });
  return found == kKinds.end() ? nullptr : found;
}

// The parts of one kind are numbered: "xl/drawings/drawing1.xml" and "xl/drawings/drawing2.xml".
std::string WithoutNumbers(std::string_view part) {
  std::string kind(part);
  std::erase_if(kind, [](char letter) { return letter >= '0' && letter <= '9'; });
  return kind;
}

// What the parts are, in words that are the same for parts of one kind; empty for what nobody misses.
std::string WordsFor(const std::string& part) {
  if (IsNone(part)) return {};
  const KindOfParts* const kind = KindOf(part);
  if (kind == nullptr) return "what its part " + WithoutNumbers(part) + " holds";
  return kind->what == nullptr ? std::string() : kind->what;
}

std::set<std::string> AllWords(const std::vector<std::string>& parts) {
  std::set<std::string> all;
  for (const std::string& part : parts) all.insert(WordsFor(part));
  return all;
}

}  // namespace

std::vector<std::string> SentencesOfLostParts(const std::vector<std::string>& parts_before,
                                              const std::vector<std::string>& parts_after) {
  const std::set<std::string> kept = AllWords(parts_after);
  std::vector<std::string> sentences;
  for (const std::string& words : AllWords(parts_before)) {
    if (!words.empty() && !kept.contains(words))
      sentences.push_back("not kept by LibreOffice: " + words + ".");
  }
  return sentences;
}

}  // namespace mirelo::libreoffice
