#include "adapters/workbook/xlsx/style_merge.h"

#include <initializer_list>
#include <map>
#include <set>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/editable_xml.h"
#include "adapters/workbook/xlsx/xml_part.h"
#include "spreadsheet/format_code.h"

namespace mirelo::workbook {

namespace {

constexpr std::int32_t kLastBuiltInFormat = 163;

// One list of a style part, such as its fonts, that items are added to once each.
class StyleList {
 public:
  StyleList(EditableXml& xml, std::string_view name, std::initializer_list<std::string_view> followers)
      : xml_(xml), list_(xml.ChildFor(xml.root(), name, followers)) {
    for (const pugi::xml_node item : list_.children()) {
      if (item.type() == pugi::node_element) indexes_.try_emplace(TextOf(item), count_++);
    }
  }

  // Adds a copy of the item, unless the list has it; its index.
  std::size_t Add(pugi::xml_node item) {
    pugi::xml_node copy = list_.append_copy(item);
    TakePrefix(copy);
    const auto [known, is_new] = indexes_.try_emplace(TextOf(copy), count_);
    if (!is_new) {
      list_.remove_child(copy);
      return known->second;
    }
    ++count_;
    SetAttribute(list_, "count", std::to_string(count_));
    return known->second;
  }

 private:
  void TakePrefix(pugi::xml_node node) {
    node.set_name(xml_.NameOf(node.name()).c_str());
    for (pugi::xml_node child : node.children()) {
      if (child.type() == pugi::node_element) TakePrefix(child);
    }
  }

  EditableXml& xml_;
  pugi::xml_node list_;
  std::map<std::string, std::size_t> indexes_;
  std::size_t count_ = 0;
};

// The numbers of number formats; those of a file's own begin behind the built-in ones.
class NumberFormats {
 public:
  explicit NumberFormats(EditableXml& xml) : xml_(xml) {
    ForEachChild(Child(xml.root(), "numFmts"), "numFmt", [&](pugi::xml_node node) {
      const std::int32_t number = Number<std::int32_t>(node, "numFmtId").value_or(0);
      codes_.insert_or_assign(number, Attribute(node, "formatCode"));  // of two the last one holds
      taken_.insert(number);
    });
    for (const auto& [number, code] : codes_) numbers_.try_emplace(code, number);
    // Cells may use numbers that the file does not tell, and must not come to use new formats by that.
    for (const char* list : {"cellStyleXfs", "cellXfs"}) {
      ForEachChild(Child(xml.root(), list), "xf", [&](pugi::xml_node node) {
        taken_.insert(Number<std::int32_t>(node, "numFmtId").value_or(0));
      });
    }
  }

  // Whether a built-in number stands for another format here than usually.
  bool IsOverridden(std::int32_t number) const {
    const auto own = codes_.find(number);
    return own != codes_.end() && BuiltInFormat(number) && own->second != *BuiltInFormat(number);
  }

  // The number of a format of the file writer's, which is added when it is not there.
  std::int32_t NumberFor(const std::string& code) {
    const auto [known, is_new] = numbers_.try_emplace(code, 0);
    if (is_new) {
      known->second = FreeNumber();
      pugi::xml_document copy;
      pugi::xml_node node = copy.append_child("numFmt");
      SetAttribute(node, "numFmtId", std::to_string(known->second));
      SetAttribute(node, "formatCode", code);
      StyleList(xml_, "numFmts",
                {"fonts", "fills", "borders", "cellStyleXfs", "cellXfs", "cellStyles", "dxfs", "tableStyles",
                 "colors", "extLst"})
          .Add(node);
    }
    return known->second;
  }

 private:
  std::int32_t FreeNumber() {
    while (!taken_.insert(++last_).second) {
    }
    return last_;
  }

  EditableXml& xml_;
  std::map<std::string, std::int32_t> numbers_;
  std::map<std::int32_t, std::string> codes_;
  std::set<std::int32_t> taken_;
  std::int32_t last_ = kLastBuiltInFormat;
};

class StyleMerger {
 public:
  StyleMerger(const std::string& part, std::string_view into, std::string_view from)
      : into_(part, into), from_(part, from) {}

  StyleIndexes Merge() {
    MergeNumberFormats();
    const auto fonts = MergeList("fonts", {"fills", "borders", "cellStyleXfs", "cellXfs", "cellStyles",
                                           "dxfs", "tableStyles", "colors", "extLst"});
    const auto fills = MergeList("fills", {"borders", "cellStyleXfs", "cellXfs", "cellStyles", "dxfs",
                                           "tableStyles", "colors", "extLst"});
    const auto borders = MergeList(
        "borders", {"cellStyleXfs", "cellXfs", "cellStyles", "dxfs", "tableStyles", "colors", "extLst"});
    ForEachChild(Child(from_.root(), "cellXfs"), "xf", [&](pugi::xml_node format) {
      Renumber(format, "fontId", fonts);
      Renumber(format, "fillId", fills);
      Renumber(format, "borderId", borders);
      RenumberFormat(format);
    });
    ForEachChild(Child(from_.root(), "dxfs"), "dxf", [&](pugi::xml_node dxf) {
      if (const pugi::xml_node format = Child(dxf, "numFmt")) RenumberFormat(format);
    });
    StyleIndexes indexes;
    indexes.cells = MergeList("cellXfs", {"cellStyles", "dxfs", "tableStyles", "colors", "extLst"});
    indexes.differential = MergeList("dxfs", {"tableStyles", "colors", "extLst"});
    return indexes;
  }

  std::string Text() const { return into_.Text(); }

 private:
  void MergeNumberFormats() {
    NumberFormats formats(into_);
    const auto take = [&](pugi::xml_node node) {
      numbers_[std::string(Attribute(node, "numFmtId"))] =
          std::to_string(formats.NumberFor(std::string(Attribute(node, "formatCode"))));
    };
    ForEachChild(Child(from_.root(), "numFmts"), "numFmt", take);
    ForEachChild(Child(from_.root(), "dxfs"), "dxf", [&](pugi::xml_node dxf) {
      if (const pugi::xml_node format = Child(dxf, "numFmt")) take(format);
    });
    ForEachChild(Child(from_.root(), "cellXfs"), "xf", [&](pugi::xml_node format) {
      const auto number = Number<std::int32_t>(format, "numFmtId").value_or(0);
      if (formats.IsOverridden(number))
        numbers_[std::to_string(number)] =
            std::to_string(formats.NumberFor(std::string(*BuiltInFormat(number))));
    });
  }

  std::vector<std::size_t> MergeList(std::string_view name,
                                     std::initializer_list<std::string_view> followers) {
    std::vector<std::size_t> indexes;
    const pugi::xml_node from = Child(from_.root(), name);
    if (!from.first_child()) return indexes;
    StyleList list(into_, name, followers);
    for (const pugi::xml_node item : from.children()) {
      if (item.type() == pugi::node_element) indexes.push_back(list.Add(item));
    }
    return indexes;
  }

  static void Renumber(pugi::xml_node format, std::string_view attribute,
                       const std::vector<std::size_t>& indexes) {
    const auto index = Number<std::size_t>(format, attribute).value_or(0);
    if (index < indexes.size()) SetAttribute(format, attribute, std::to_string(indexes[index]));
  }

  void RenumberFormat(pugi::xml_node node) {
    const auto number = numbers_.find(std::string(Attribute(node, "numFmtId")));
    if (number != numbers_.end()) SetAttribute(node, "numFmtId", number->second);
  }

  EditableXml into_;
  EditableXml from_;
  std::map<std::string, std::string> numbers_;  // of number formats, by those of the file writer
};

}  // namespace

StyleIndexes MergeStyles(const std::string& part, std::string_view into, std::string_view from,
                         std::string& merged) {
  StyleMerger merger(part, into, from);
  StyleIndexes indexes = merger.Merge();
  merged = merger.Text();
  return indexes;
}

}  // namespace mirelo::workbook
