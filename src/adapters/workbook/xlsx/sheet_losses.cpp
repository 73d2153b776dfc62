#include "adapters/workbook/xlsx/sheet_losses.h"

#include <array>
#include <span>
#include <string_view>

#include "adapters/workbook/xlsx/part_words.h"
#include "adapters/workbook/xlsx/xml_part.h"

namespace mirelo::workbook {

namespace {

constexpr std::string_view kPrintSettings = "print settings";
constexpr std::string_view kNewerFeatures = "features of newer programs";
constexpr bool kWork = true;

constexpr std::array kSheetElements = std::to_array<PartWord>({
    {"dimension", ""},
    {"sheetViews", ""},     // looked into by itself
    {"sheetFormatPr", ""},  // likewise
    {"cols", ""},
    {"sheetData", ""},
    {"sheetCalcPr", ""},
    {"pageMargins", ""},
    {"phoneticPr", ""},
    {"conditionalFormatting", ""},  // looked into by itself
    {"drawing", ""},                // reported by the part that it refers to, as are the next four
    {"legacyDrawing", ""},
    {"legacyDrawingHF", ""},
    {"tableParts", ""},
    {"picture", ""},
    {"sheetPr", ""},
    {"autoFilter", "filters", kWork},
    {"sortState", "filters", kWork},
    {"cellWatches", "watched cells", kWork},
    {"colBreaks", "page breaks"},
    {"rowBreaks", "page breaks"},
    {"controls", "form controls", kWork},
    {"customProperties", "custom properties"},
    {"customSheetViews", "custom views"},
    {"dataConsolidate", "data consolidation", kWork},
    {"dataValidations", "data validation", kWork},
    {"extLst", kNewerFeatures},
    {"AlternateContent", kNewerFeatures},
    {"headerFooter", "page headers and footers"},
    {"hyperlinks", "hyperlinks", kWork},
    {"ignoredErrors", "ignored errors"},
    {"mergeCells", "merged cells", kWork},
    {"oleObjects", "embedded objects", kWork},
    {"pageSetup", kPrintSettings},
    {"printOptions", kPrintSettings},
    {"protectedRanges", "protection", kWork},
    {"scenarios", "scenarios", kWork},
    {"sheetProtection", "protection", kWork},
    {"smartTags", "smart tags"},
    {"webPublishItems", "web publishing"},
});

constexpr std::array kSheetParts = std::to_array<PartWord>({
    {"hyperlink", ""},   // reported by the element
    {"vmlDrawing", ""},  // looked into by itself
    {"comments", ""},
    {"threadedComment", "threads of comments", kWork},
    {"ctrlProp", "form controls", kWork},
    {"control", "form controls", kWork},
    {"drawing", ""},  // looked into by itself
    {"image", "a background picture"},
    {"oleObject", "embedded objects", kWork},
    {"package", "embedded objects", kWork},
    {"pivotTable", "pivot tables", kWork},
    {"printerSettings", kPrintSettings},
    {"queryTable", "queries", kWork},
    {"slicer", "slicers", kWork},
    {"table", "tables", kWork},
    {"timeline", "timelines", kWork},
});

constexpr std::array kWorkbookElements = std::to_array<PartWord>({
    {"AlternateContent", ""},  // where the file was saved
    {"bookViews", ""},
    {"calcPr", ""},
    {"extLst", ""},
    {"externalReferences", ""},  // reported by the part, as are the next two
    {"pivotCaches", ""},
    {"revisionPtr", ""},
    {"fileVersion", ""},
    {"sheets", ""},
    {"workbookPr", ""},
    {"customWorkbookViews", "custom views"},
    {"definedNames", "defined names"},
    {"fileRecoveryPr", ""},
    {"fileSharing", "write protection"},
    {"functionGroups", "function groups"},
    {"oleSize", "the size of an embedded view"},
    {"smartTagPr", "smart tags"},
    {"smartTagTypes", "smart tags"},
    {"webPublishObjects", "web publishing"},
    {"webPublishing", "web publishing"},
    {"workbookProtection", "protection"},
});

constexpr std::array kWorkbookParts = std::to_array<PartWord>({
    {"calcChain", ""},
    {"chartsheet", ""},   // looked into by itself
    {"dialogsheet", ""},  // reported with its name, and the next
    {"xlMacrosheet", ""},
    {"sharedStrings", ""},
    {"styles", ""},
    {"theme", ""},
    {"worksheet", ""},
    {"attachedToolbars", "toolbars"},
    {"connections", "data connections"},
    {"customXml", "custom data"},
    {"externalLink", "links to other workbooks"},
    {"person", "the people of comment threads"},
    {"pivotCacheDefinition", "the data of pivot tables"},
    {"sheetMetadata", "metadata of cells"},
    {"slicerCache", "slicers"},
    {"timelineCache", "timelines"},
    {"vbaProject", "macros"},
});

constexpr std::array kPackageParts = std::to_array<PartWord>({
    {"core-properties", ""},
    {"extended-properties", ""},
    {"officeDocument", ""},
    {"thumbnail", ""},
    {"custom-properties", "custom document properties"},
    {"extensibility", "toolbars"},
    {"origin", ""},  // the signature, reported by itself
});

template <class Report>
void ReportParts(const Relationships& relationships, std::span<const PartWord> kinds, Report&& report) {
  for (const Relationship& relationship : relationships.all()) {
    const PartMeaning meaning = MeaningOf(kinds, relationship.type);
    if (!meaning.text.empty()) report(meaning);
  }
}

// A pane that is split but not frozen, or another look at the sheet than the usual one.
void ReportViews(pugi::xml_node worksheet, const std::string& sheet, Losses& losses) {
  ForEachChild(Child(worksheet, "sheetViews"), "sheetView", [&](pugi::xml_node view) {
    const std::string_view zoom = Attribute(view, "zoomScale");
    const bool is_usual = (zoom.empty() || zoom == "100") && Flag(view, "showGridLines", true) &&
                          Flag(view, "showRowColHeaders", true) && Flag(view, "showZeros", true) &&
                          !Flag(view, "rightToLeft", false) && !Flag(view, "showFormulas", false) &&
                          (!HasAttribute(view, "view") || Attribute(view, "view") == "normal");
    if (!is_usual) losses.Add(sheet, "not kept: view settings such as zoom and grid lines.");
    const pugi::xml_node pane = Child(view, "pane");
    if (pane && !Attribute(pane, "state").starts_with("frozen")) losses.Add(sheet, "not kept: split panes.");
  });
}

void ReportGroups(pugi::xml_node worksheet, const std::string& sheet, Losses& losses) {
  const pugi::xml_node format = Child(worksheet, "sheetFormatPr");
  if (Number<int>(format, "outlineLevelRow").value_or(0) > 0 ||
      Number<int>(format, "outlineLevelCol").value_or(0) > 0) {
    losses.Add(sheet, "not kept: groups of rows and columns.");
  }
  if (Flag(format, "customHeight", false)) losses.Add(sheet, "not kept: the standard height of rows.");
  if (Child(Child(worksheet, "sheetPr"), "tabColor")) losses.Add(sheet, "not kept: the colour of the tab.");
}

void AddOfWorkbook(const PartMeaning& meaning, Losses& losses) {
  losses.Add({Loss::Of::Workbook, "Workbook: not kept: " + meaning.text + "."});
}

}  // namespace

void ReportSheetLosses(pugi::xml_node worksheet, const Relationships& relationships, const std::string& sheet,
                       Losses& losses) {
  const auto report = [&](const PartMeaning& meaning) {
    losses.Add(sheet, "not kept: " + meaning.text + ".", meaning.is_work);
  };
  ReportElements(worksheet, kSheetElements, report);
  ReportParts(relationships, kSheetParts, report);
  ReportViews(worksheet, sheet, losses);
  ReportGroups(worksheet, sheet, losses);
}

void ReportWorkbookLosses(pugi::xml_node workbook, const Relationships& relationships, Losses& losses) {
  const auto report = [&](const PartMeaning& meaning) { AddOfWorkbook(meaning, losses); };
  ReportElements(workbook, kWorkbookElements, report);
  ReportParts(relationships, kWorkbookParts, report);
}

void ReportPackageLosses(const Relationships& relationships, Losses& losses) {
  ReportParts(relationships, kPackageParts,
              [&](const PartMeaning& meaning) { AddOfWorkbook(meaning, losses); });
  if (relationships.FindType("origin") != nullptr)
    losses.Add({Loss::Of::File, "Workbook: not kept: the digital signature."});
}

}  // namespace mirelo::workbook
