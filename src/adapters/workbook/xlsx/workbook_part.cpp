#include "adapters/workbook/xlsx/workbook_part.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "adapters/workbook/xlsx/editable_xml.h"
#include "adapters/workbook/xlsx/xml_part.h"

namespace mirelo::workbook {

namespace {

std::vector<pugi::xml_node> EntriesOf(pugi::xml_node workbook) {
  std::vector<pugi::xml_node> entries;
  ForEachChild(Child(workbook, "sheets"), "sheet", [&](pugi::xml_node node) { entries.push_back(node); });
  return entries;
}

class WorkbookPart {
 public:
  WorkbookPart(const std::string& part, std::string_view text, const Book& book,
               const std::vector<LoadedBook::Entry>& old,
               const std::map<const Sheet*, std::string>& relationship_ids)
      : xml_(part, text),
        book_(book),
        old_(old),
        relationship_ids_(relationship_ids),
        old_entries_(EntriesOf(xml_.root())) {}

  std::string Rewrite() {
    PlanEntries();
    WriteEntries();
    MoveLocalNames();
    WriteActiveTab();
    pugi::xml_node calculation =
        xml_.ChildFor(xml_.root(), "calcPr",
                      {"oleSize", "customWorkbookViews", "pivotCaches", "smartTagPr", "smartTagTypes",
                       "webPublishing", "fileRecoveryPr", "webPublishObjects", "extLst"});
    SetAttribute(calculation, "fullCalcOnLoad", "1");
    return xml_.Text();
  }

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  struct Entry {
    std::size_t old_place;  // kNone for a new sheet
    const Sheet* sheet;     // null for what is no worksheet
  };

  std::size_t OldPlaceOf(const Sheet& sheet) const {
    const auto found = std::find_if(old_.begin(), old_.end(),
                                    [&](const auto& entry) { return entry.sheet.get() == &sheet; });
    return found == old_.end() ? kNone : static_cast<std::size_t>(found - old_.begin());
  }

  void PlanEntries() {
    std::size_t next_old = 0;
    const auto add_others_before = [&](std::size_t place) {
      for (; next_old < place; ++next_old) {
        if (old_[next_old].sheet == nullptr) entries_.push_back({next_old, nullptr});
      }
    };
    for (const auto& sheet : book_.sheets) {
      const std::size_t place = OldPlaceOf(*sheet);
      if (place != kNone) add_others_before(place);
      entries_.push_back({place, sheet.get()});
    }
    add_others_before(old_entries_.size());
  }

  void WriteEntries() {
    pugi::xml_node list = Child(xml_.root(), "sheets");
    const std::string id_name = IdAttributeName();
    std::uint32_t last_id = 0;
    for (const pugi::xml_node node : old_entries_)
      last_id = std::max(last_id, Number<std::uint32_t>(node, "sheetId").value_or(0));

    for (const Entry& entry : entries_) {
      const bool is_new = entry.old_place == kNone;
      pugi::xml_node node = is_new ? list.append_child(xml_.NameOf("sheet").c_str())
                                   : list.append_move(old_entries_[entry.old_place]);
      if (entry.sheet == nullptr) continue;
      SetAttribute(node, "name", entry.sheet->name);
      if (is_new) {
        SetAttribute(node, "sheetId", std::to_string(++last_id));
        DeclareRelationships(node, id_name);
      }
      WriteState(node, *entry.sheet);
      const auto id_of_sheet = relationship_ids_.find(entry.sheet);
      if (id_of_sheet == relationship_ids_.end()) continue;
      pugi::xml_attribute id = node.attribute(id_name.c_str());
      if (!id) id = node.append_attribute(id_name.c_str());
      id.set_value(id_of_sheet->second.c_str());
    }
  }

  // The full name of the attribute that holds a sheet's relationship.
  std::string IdAttributeName() const {
    for (const pugi::xml_node node : old_entries_) {
      for (const pugi::xml_attribute attribute : node.attributes()) {
        if (IsNamed(attribute.name(), "id")) return attribute.name();
      }
    }
    return "r:id";
  }

  // Other entries may bring the declaration of that name's prefix each for itself.
  static void DeclareRelationships(pugi::xml_node node, const std::string& id_name) {
    constexpr const char* kRelationships =
        "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    const std::size_t colon = id_name.find(':');
    if (colon != std::string::npos)
      node.append_attribute(("xmlns:" + id_name.substr(0, colon)).c_str()) = kRelationships;
  }

  static void WriteState(pugi::xml_node node, const Sheet& sheet) {
    if (!sheet.hidden) return RemoveAttribute(node, "state");
    if (!Attribute(node, "state").ends_with("idden")) SetAttribute(node, "state", "hidden");
  }

  // Names that belong to a sheet know it by its place.
  void MoveLocalNames() {
    ForEachChild(Child(xml_.root(), "definedNames"), "definedName", [&](pugi::xml_node node) {
      const auto old_place = Number<std::size_t>(node, "localSheetId");
      const auto entry = std::find_if(entries_.begin(), entries_.end(),
                                      [&](const Entry& e) { return old_place && e.old_place == *old_place; });
      if (entry != entries_.end())
        SetAttribute(node, "localSheetId", std::to_string(entry - entries_.begin()));
    });
  }

  void WriteActiveTab() {
    const auto entry = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& e) {
      if (book_.front_chart == nullptr) return e.sheet == book_.FrontSheet().get();
      return e.old_place != kNone && old_[e.old_place].chart == book_.front_chart;
    });
    pugi::xml_node views = xml_.ChildFor(xml_.root(), "bookViews", {"sheets"});
    pugi::xml_node view = xml_.ChildFor(views, "workbookView", {});
    SetAttribute(view, "activeTab", std::to_string(entry - entries_.begin()));
  }

  EditableXml xml_;
  const Book& book_;
  const std::vector<LoadedBook::Entry>& old_;
  const std::map<const Sheet*, std::string>& relationship_ids_;
  std::vector<pugi::xml_node> old_entries_;
  std::vector<Entry> entries_;
};

}  // namespace

std::vector<std::string> SheetRelationshipIds(const std::string& part, std::string_view text) {
  const EditableXml xml(part, text);
  std::vector<std::string> ids;
  for (const pugi::xml_node entry : EntriesOf(xml.root())) ids.emplace_back(Attribute(entry, "id"));
  return ids;
}

std::string RewriteWorkbookPart(const std::string& part, std::string_view text, const Book& book,
                                const std::vector<LoadedBook::Entry>& old,
                                const std::map<const Sheet*, std::string>& relationship_ids) {
  return WorkbookPart(part, text, book, old, relationship_ids).Rewrite();
}

}  // namespace mirelo::workbook
