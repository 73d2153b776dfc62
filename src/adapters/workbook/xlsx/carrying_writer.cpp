#include "adapters/workbook/xlsx/carrying_writer.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "adapters/workbook/atomic_file.h"
#include "adapters/workbook/xlsx/content_types.h"
#include "adapters/workbook/xlsx/package.h"
#include "adapters/workbook/xlsx/package_editor.h"
#include "adapters/workbook/xlsx/relationship_list.h"
#include "adapters/workbook/xlsx/result_remover.h"
#include "adapters/workbook/xlsx/sheet_transplant.h"
#include "adapters/workbook/xlsx/style_merge.h"
#include "adapters/workbook/xlsx/workbook_part.h"
#include "adapters/workbook/xlsx/workbook_writer.h"

namespace mirelo::workbook {

namespace {

constexpr const char* kSharedStrings = "xl/sharedStrings.xml";  // where the file writer puts them
constexpr const char* kStylesPart = "xl/styles.xml";
constexpr std::string_view kNoStyles =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"/>";

// For files that were loaded, or have just been written.
LoadLimits OfTrustedFiles() {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
  LoadLimits limits;
  limits.file_bytes = limits.part_bytes = limits.total_bytes = limits.ratio_free_bytes = kMost;
  limits.parts = limits.nodes = kMost;
  return limits;
}

std::string WorkbookPartOf(Package& package) {
  return Relationships(package, "").FindType("officeDocument")->target;
}

class CarryingWriter {
 public:
  CarryingWriter(const Book& book, const Origin& origin, const Origin::Kept& kept, const NewSheets& fresh,
                 const StaleResults& stale, const std::filesystem::path& file)
      : book_(book),
        origin_(origin),
        kept_(kept),
        stale_(stale),
        fresh_(fresh),
        file_(file),
        old_(origin.file(), OfTrustedFiles()),
        workbook_(WorkbookPartOf(old_)),
        old_workbook_(old_.Read(workbook_)),
        package_relationships_("", OldText(RelationshipsPartOf(""))),
        relationships_(workbook_, OldText(RelationshipsPartOf(workbook_))),
        types_(OldText(ContentTypes::kPart)),
        editor_(origin.file()) {}

  void Write() {
    DropStaleRelationships();
    ChangeCarriedSheets();
    TakeNewSheets();
    editor_.Put(workbook_, RewriteWorkbookPart(workbook_, old_workbook_, book_, origin_.entries(),
                                               new_relationship_ids_));
    editor_.Put(RelationshipsPartOf(workbook_), relationships_.Text());
    editor_.Put(RelationshipsPartOf(""), package_relationships_.Text());
    const std::set<std::string> kept = ReachableParts();
    types_.KeepOnly(kept);
    editor_.Put(ContentTypes::kPart, types_.Text());
    editor_.KeepOnly(kept);
    WriteWholeFile(file_, editor_.Pack(ContentTypes::kPart));
  }

 private:
  // Empty when the old file has no such part.
  std::string OldText(const std::string& part) { return old_.Has(part) ? old_.Read(part) : ""; }

  // Those of the sheets that are written anew; of the calculation chain, which the program that opens the
  // file builds anew; and of the signature, which no longer holds.
  void DropStaleRelationships() {
    const std::vector<std::string> ids = SheetRelationshipIds(workbook_, old_workbook_);
    std::set<std::string> used;
    for (std::size_t place = 0; place < ids.size(); ++place) {
      const Sheet* sheet = origin_.entries()[place].sheet.get();
      if (sheet == nullptr || kept_.contains(sheet)) used.insert(ids[place]);
    }
    const std::set<std::string> of_sheets(ids.begin(), ids.end());
    relationships_.RemoveIf([&](const Relationship& relationship) {
      return relationship.type == "calcChain" ||
             (of_sheets.contains(relationship.id) && !used.contains(relationship.id));
    });
    package_relationships_.RemoveIf(
        [](const Relationship& relationship) { return relationship.type == "origin"; });
  }

  // Two selected tabs would be a group, in which whatever a person types goes to both sheets. And programs
  // that find the result of a formula in the file show it, though what it was computed from is another.
  void ChangeCarriedSheets() {
    const std::vector<std::string> ids = SheetRelationshipIds(workbook_, old_workbook_);
    const std::vector<Relationship> relationships = relationships_.all();
    for (std::size_t place = 0; place < ids.size(); ++place) {
      const auto& [sheet, standing, chart, sheet_part] = origin_.entries()[place];
      const bool may_be_selected = sheet == nullptr || (standing.is_selected && kept_.contains(sheet.get()));
      const bool is_in_front =
          sheet != nullptr ? IsActive(*sheet) : chart != nullptr && chart == book_.front_chart;
      const bool is_deselected = may_be_selected && !is_in_front;
      const auto stale = stale_.find(sheet.get());
      if (!is_deselected && stale == stale_.end()) continue;
      const auto relationship = std::find_if(relationships.begin(), relationships.end(),
                                             [&](const auto& l) { return l.id == ids[place]; });
      if (relationship == relationships.end() || !old_.Has(relationship->target)) continue;
      const std::vector<CellPlace>* cells = stale == stale_.end() ? nullptr : &stale->second;
      editor_.PutLater(relationship->target, [this, part = relationship->target, is_deselected, cells] {
        std::string text = old_.Read(part);
        if (cells != nullptr) text = WithoutResults(part, std::move(text), *cells);
        return is_deselected ? WithoutSelectedTab(std::move(text)) : text;
      });
    }
  }

  bool IsActive(const Sheet& sheet) const { return book_.FrontSheet().get() == &sheet; }

  void TakeNewSheets() {
    if (fresh_.sheets.empty()) return;
    new_.emplace(fresh_.file, OfTrustedFiles());
    new_types_.emplace(new_->Read(ContentTypes::kPart));
    if (new_->Has(kSharedStrings)) new_shared_strings_ = SharedStringsIn(new_->Read(kSharedStrings));
    TakeStyles();
    for (std::size_t i = 0; i < fresh_.sheets.size(); ++i) TakeSheet(*fresh_.sheets[i], i + 1);
  }

  void TakeStyles() {
    const std::vector<Relationship> relationships = relationships_.all();
    const auto relationship = std::find_if(relationships.begin(), relationships.end(),
                                           [](const auto& l) { return l.type == "styles"; });
    const std::string part =
        relationship != relationships.end() ? relationship->target : FreeName("styles", ".xml");
    if (relationship == relationships.end()) {
      relationships_.Add("styles", part);
      types_.SetKind(part, new_types_->KindOf(kStylesPart));
    }
    std::string merged;
    new_indexes_ = MergeStyles(part, editor_.Has(part) ? old_.Read(part) : std::string(kNoStyles),
                               new_->Read(kStylesPart), merged);
    editor_.Put(part, std::move(merged));
  }

  void TakeSheet(const Sheet& sheet, std::size_t number) {
    const std::string from = "xl/worksheets/sheet" + std::to_string(number) + ".xml";
    const std::string to = FreeName("worksheets/sheet", ".xml");
    Add(to, [this, from, is_active = IsActive(sheet)] {
      return TransplantSheet(new_->Read(from), new_indexes_, new_shared_strings_, is_active);
    });
    new_relationship_ids_[&sheet] = relationships_.Add("worksheet", to);
    types_.SetKind(to, new_types_->KindOf(from));
    TakeRelated(from, to);
  }

  // The parts that a part of the new file leads to: comments and their boxes, charts. Each is led to from one
  // place only.
  void TakeRelated(const std::string& from, const std::string& to) {
    if (!new_->Has(RelationshipsPartOf(from))) return;
    RelationshipList relationships(to, new_->Read(RelationshipsPartOf(from)));
    const Relationships old_relationships(*new_, from);
    for (const Relationship& relationship : old_relationships.all()) {
      if (relationship.external) continue;
      const std::string part = FreeNameLike(relationship.target);
      Add(part, [this, source = relationship.target] { return new_->Read(source); });
      types_.SetKind(part, new_types_->KindOf(relationship.target));
      relationships.Redirect(relationship.id, part);
      TakeRelated(relationship.target, part);
    }
    Add(RelationshipsPartOf(to), [text = relationships.Text()] { return text; });
  }

  void Add(const std::string& part, PackageEditor::Make make) {
    editor_.PutLater(part, std::move(make));
    added_.insert(part);
  }

  // A name in the workbook part's folder that no part has.
  std::string FreeName(const std::string& start, const std::string& end) const {
    const std::string folder = workbook_.substr(0, workbook_.rfind('/') + 1);
    for (std::size_t number = 1;; ++number) {
      std::string name = folder;
      name.append(start).append(std::to_string(number)).append(end);
      if (!editor_.Has(name)) return name;
    }
  }

  // The same for a part of the new file: "drawings/drawing7.xml" for "xl/drawings/drawing1.xml".
  std::string FreeNameLike(const std::string& part) const {
    const std::size_t name = part.find('/') + 1;
    const std::size_t dot = part.rfind('.');
    const std::size_t number = part.find_last_not_of("0123456789", dot - 1) + 1;
    return FreeName(part.substr(name, number - name), part.substr(dot));
  }

  // Everything that the package leads to, with the lists that lead there.
  std::set<std::string> ReachableParts() {
    std::set<std::string> reached = added_;
    reached.insert(ContentTypes::kPart);
    std::vector<std::string> open{""};
    while (!open.empty()) {
      const std::string part = std::move(open.back());
      open.pop_back();
      if (!part.empty() && (!editor_.Has(part) || !reached.insert(part).second)) continue;
      if (!editor_.Has(RelationshipsPartOf(part))) continue;
      reached.insert(RelationshipsPartOf(part));
      for (const Relationship& relationship : RelationshipsOfPart(part)) {
        if (!relationship.external && !relationship.target.empty())
          open.push_back(relationship.target);  // one may lead nowhere
      }
    }
    return reached;
  }

  // None where the list is damaged, which is kept all the same.
  std::vector<Relationship> RelationshipsOfPart(const std::string& part) {
    if (part.empty()) return package_relationships_.all();
    if (part == workbook_) return relationships_.all();
    try {
      return Relationships(old_, part).all();
    } catch (const RuntimeError&) {
      return {};
    }
  }

  const Book& book_;
  const Origin& origin_;
  const Origin::Kept& kept_;
  const StaleResults& stale_;
  const NewSheets& fresh_;
  const std::filesystem::path& file_;
  Package old_;
  std::string workbook_;  // the name of its part
  std::string old_workbook_;
  RelationshipList package_relationships_;
  RelationshipList relationships_;  // of the workbook part
  ContentTypes types_;
  PackageEditor editor_;

  std::optional<Package> new_;  // what the file writer wrote
  std::optional<ContentTypes> new_types_;
  std::vector<std::string> new_shared_strings_;
  StyleIndexes new_indexes_;  // of its formats among the old ones
  std::map<const Sheet*, std::string> new_relationship_ids_;
  std::set<std::string> added_;
};

}  // namespace

NewSheets WriteNewSheets(const Book& book, const Origin::Kept& kept, const std::filesystem::path& file) {
  NewSheets fresh;
  std::copy_if(book.sheets.begin(), book.sheets.end(), std::back_inserter(fresh.sheets),
               [&](const auto& sheet) { return !kept.contains(sheet.get()); });
  if (fresh.sheets.empty()) return fresh;
  WriteSheets(book, fresh.sheets, file);
  fresh.file = ReadWholeFile(file, OfTrustedFiles().file_bytes);
  return fresh;
}

void WriteCarrying(const Book& book, const Origin& origin, const Origin::Kept& kept,
                   const StaleResults& stale, const NewSheets& fresh, const std::filesystem::path& file) {
  CarryingWriter(book, origin, kept, fresh, stale, file).Write();
}

}  // namespace mirelo::workbook
