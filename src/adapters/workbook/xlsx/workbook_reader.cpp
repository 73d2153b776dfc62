#include "adapters/workbook/xlsx/workbook_reader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/sheet_name.h"
#include "adapters/workbook/xlsx/drawing_reader.h"
#include "adapters/workbook/xlsx/properties_reader.h"
#include "adapters/workbook/xlsx/relationships.h"
#include "adapters/workbook/xlsx/sheet_losses.h"
#include "adapters/workbook/xlsx/sheet_reader.h"
#include "adapters/workbook/xlsx/style_reader.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/text_units.h"

namespace mirelo::workbook {

namespace {

std::string NameOfWorkbookPart(Package& package, const Relationships& relationships) {
  const Relationship* relationship = relationships.FindType("officeDocument");
  if (relationship == nullptr || !package.Has(relationship->target))
    throw Damaged("archive", "this is no .xlsx workbook");
  return relationship->target;
}

// Whether a part uses the vocabulary that the file writer writes, not its stricter sister.
bool IsInUsualVocabulary(pugi::xml_node root) {
  constexpr std::string_view kUsual = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
  const auto attributes = root.attributes();
  return std::any_of(attributes.begin(), attributes.end(), [&](const pugi::xml_attribute& attribute) {
    return std::string_view(attribute.name()).starts_with("xmlns") && kUsual == attribute.value();
  });
}

class WorkbookReader {
 public:
  WorkbookReader(std::span<const char> file, const LoadLimits& limits)
      : package_(file, limits),
        package_relationships_(package_, ""),
        xml_(package_, NameOfWorkbookPart(package_, package_relationships_), "workbook"),
        relationships_(package_, xml_.name()),
        book_(std::make_shared<Book>()) {}

  LoadedBook Read() {
    SheetContext context{package_, *book_,
                         {},       {},
                         {},       ColorReader(package_, PartOfType("theme")),
                         false,    LoadBudget(package_.limits()),
                         losses_,  {}};
    context.counts_from_1904 = CountsFrom1904();
    ReadStyleTable(context);
    if (const std::string part = PartOfType("sharedStrings"); !part.empty()) {
      context.strings = ReadSharedStrings(package_, part);
    }
    ReadSheets(context);
    BindSeries(context.series, *book_, names_, losses_);
    ReadActiveSheet();
    book_->properties = ReadProperties(package_, package_relationships_);
    ReportWorkbookLosses(xml_.root(), relationships_, losses_);
    ReportPackageLosses(package_relationships_, losses_);
    return {book_, losses_.list(), std::move(entries_), CanBeCarried()};
  }

 private:
  // The part that the workbook refers to by this type; empty when it refers to none.
  std::string PartOfType(std::string_view type) const {
    const Relationship* relationship = relationships_.FindType(type);
    return relationship == nullptr || relationship->external ? "" : relationship->target;
  }

  void ReadStyleTable(SheetContext& context) {
    FileStyles styles{{Style()}, {}, {false}, false};
    if (const std::string part = PartOfType("styles"); !part.empty()) {
      styles = ReadStyles(package_, part, context.colors, losses_);
    }
    book_->styles = StyleTable(styles.cells.front());
    for (std::size_t i = 0; i < styles.cells.size(); ++i) {
      context.styles.push_back(book_->styles.Intern(styles.cells[i]));
      if (styles.are_lossy[i]) lossy_styles_.insert(context.styles.back());
    }
    are_differential_lossy_ = styles.are_differential_lossy;
    context.differential_formats = std::move(styles.differential);
  }

  void ReadSheets(SheetContext& context) {
    std::int32_t place = 0;
    ForEachChild(Child(xml_.root(), "sheets"), "sheet", [&](pugi::xml_node node) {
      if (static_cast<std::size_t>(++place) > package_.limits().sheets)
        throw Damaged(xml_.name(), "too many sheets");
      places_.push_back({book_->sheets.size(), nullptr});
      entries_.push_back(ReadSheetEntry(context, node));
    });
    if (book_->sheets.empty()) throw Damaged(xml_.name(), "the workbook has no worksheet");
  }

  LoadedBook::Entry ReadSheetEntry(SheetContext& context, pugi::xml_node node) {
    const std::string name = CleanText(Attribute(node, "name"));
    const Relationship* relationship = relationships_.FindId(Attribute(node, "id"));
    if (relationship == nullptr || relationship->external)
      throw Damaged(xml_.name(), "sheet \"" + name + "\" has no part");
    if (relationship->type == "worksheet") return ReadWorksheet(context, node, relationship->target, name);
    if (relationship->type == "chartsheet")
      return ReadChartSheetEntry(context, node, relationship->target, name);
    LoseOfWorkbook("\"" + name + "\", a sheet of the kind \"" + relationship->type + "\".");
    return {};
  }

  LoadedBook::Entry ReadWorksheet(SheetContext& context, pugi::xml_node node, const std::string& part,
                                  const std::string& name) {
    auto sheet = std::make_shared<Sheet>(name);
    MakeNameFit(*sheet, "Sheet");
    const std::string_view state = Attribute(node, "state");
    sheet->hidden = state == "hidden" || state == "veryHidden";
    if (state == "veryHidden") {
      losses_.Add(
          {Loss::Of::Workbook, "Sheet \"" + sheet->name + "\": becomes a sheet that a person can unhide."});
    }
    if (!book_->chart_sheets.empty()) LoseOfWorkbook("that chart sheets stand before worksheets.");
    book_->InsertSheet(book_->sheets.size(), sheet);
    names_.push_back(name);
    SheetStanding standing = ReadSheet(context, part, *sheet);
    standing.has_lossy_formats = HasLossyFormats(*sheet);
    return {sheet, standing, nullptr, part};
  }

  LoadedBook::Entry ReadChartSheetEntry(SheetContext& context, pugi::xml_node node, const std::string& part,
                                        const std::string& name) {
    const auto chart = ReadChartSheet(context, part, name);
    if (chart == nullptr) {
      LoseOfWorkbook("\"" + name + "\", a chart sheet.");
      return {};
    }
    MakeNameFit(*chart, "Chart");
    if (Attribute(node, "state").ends_with("idden")) losses_.Add(chart->name, "not kept: that it is hidden.");
    book_->chart_sheets.push_back(chart);
    places_.back().chart = chart;
    return {nullptr, {}, chart, ""};
  }

  void LoseOfWorkbook(const std::string& what) {
    losses_.Add({Loss::Of::Workbook, "Workbook: not kept: " + what});
  }

  bool CountsFrom1904() const { return Flag(Child(xml_.root(), "workbookPr"), "date1904", false); }

  bool HasLossyFormats(const Sheet& sheet) const {
    if (are_differential_lossy_ && !sheet.conditions.all().empty()) return true;
    if (lossy_styles_.empty()) return false;
    bool has = false;
    sheet.styles.ForEach(Area::Sheet(),
                         [&](const Area&, StyleId style) { has = has || lossy_styles_.contains(style); });
    return has;
  }

  // Macros know sheets by names that sheets written anew have not; slicers and timelines know tables; and of
  // several windows each has a view of every sheet. Sheets that are written anew count days from 1900.
  bool CanBeCarried() const {
    const auto& relationships = relationships_.all();
    int windows = 0;
    ForEachChild(Child(xml_.root(), "bookViews"), "workbookView", [&](pugi::xml_node) { ++windows; });
    return !has_renamed_ && windows <= 1 && !CountsFrom1904() && IsInUsualVocabulary(xml_.root()) &&
           std::none_of(relationships.begin(), relationships.end(), [](const Relationship& relationship) {
             return relationship.type == "vbaProject" || relationship.type == "slicerCache" ||
                    relationship.type == "timelineCache";
           });
  }

  // Gives a worksheet or chart sheet another name when it may not bear its own.
  template <class T>
  void MakeNameFit(T& sheet, const std::string& kind) {
    const std::string_view objection = NameObjection(*book_, sheet, sheet.name);
    if (objection.empty()) return;
    const std::string old = std::exchange(sheet.name, FreeName(sheet, kind));
    losses_.Add({Loss::Of::File,
                 "Sheet \"" + old + "\" is renamed to \"" + sheet.name + "\": " + std::string(objection)});
    has_renamed_ = true;
  }

  template <class T>
  std::string FreeName(const T& sheet, const std::string& kind) const {
    for (std::size_t number = book_->sheets.size() + 1;; ++number) {
      std::string name = kind + std::to_string(number);
      if (NameObjection(*book_, sheet, name).empty()) return name;
    }
  }

  // The active sheet, or the first that can be seen.
  void ReadActiveSheet() {
    const auto tab =
        Number<std::size_t>(Child(Child(xml_.root(), "bookViews"), "workbookView"), "activeTab").value_or(0);
    if (tab < places_.size()) {
      book_->active = std::min(places_[tab].worksheets_before, book_->sheets.size() - 1);
      book_->front_chart = places_[tab].chart;
    }
    if (!book_->sheets[book_->active]->hidden) return;
    const auto visible =
        std::find_if(book_->sheets.begin(), book_->sheets.end(), [](const auto& s) { return !s->hidden; });
    if (visible == book_->sheets.end()) {
      book_->sheets[book_->active]->hidden = false;
    } else {
      book_->active = static_cast<std::size_t>(visible - book_->sheets.begin());
    }
  }

  Package package_;
  Relationships package_relationships_;
  XmlPart xml_;
  Relationships relationships_;
  std::shared_ptr<Book> book_;
  Losses losses_;
  std::vector<LoadedBook::Entry> entries_;
  bool has_renamed_ = false;
  std::set<StyleId> lossy_styles_;
  bool are_differential_lossy_ = false;
  std::vector<std::string> names_;  // that the file gives the book's sheets
  struct Place {
    std::size_t worksheets_before;
    std::shared_ptr<Chart> chart;  // of a chart sheet
  };
  std::vector<Place> places_;  // of each sheet in the file
};

}  // namespace

LoadedBook ReadWorkbook(std::span<const char> file, const LoadLimits& limits) {
  return WorkbookReader(file, limits).Read();
}

}  // namespace mirelo::workbook
