#pragma once

#include <set>
#include <string>
#include <string_view>

#include "adapters/workbook/xlsx/editable_xml.h"

namespace mirelo::workbook {

// What a package says of the kinds of its parts.
class ContentTypes {
 public:
  static constexpr const char* kPart = "[Content_Types].xml";

  // `text` is that of the part, empty when there is none.
  explicit ContentTypes(std::string_view text);

  // What is said of a part; empty for nothing.
  std::string KindOf(const std::string& part) const;
  void SetKind(const std::string& part, const std::string& kind);
  // Forgets the kinds of parts that are not among these, without regard to case.
  void KeepOnly(const std::set<std::string>& parts);

  std::string Text() const { return xml_.Text(); }

 private:
  EditableXml xml_;
};

}  // namespace mirelo::workbook
