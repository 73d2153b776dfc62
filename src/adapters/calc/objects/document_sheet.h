#pragma once

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/drawing/XDrawPage.hpp>
#include <com/sun/star/drawing/XShape.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <cstdint>
#include <optional>
#include <rtl/ustring.hxx>
#include <string>
#include <string_view>

#include "adapters/calc/objects/interfaces.h"

namespace mirelo::calc {

class Document;

// The page of a sheet's drawings.
Reference<css::drawing::XDrawPage> PageOf(const Reference<css::sheet::XSpreadsheet>& sheet);

// A sheet of an open document, whatever the person calls it and wherever they move it. There is one object
// for each sheet that was ever asked for; it belongs to its document, which lives as long as somebody holds
// one of its sheets. Called within Document::Ask.
//
// The office's own objects of a sheet stand for another one once theirs was deleted, without a word. So what
// tells a sheet is the page of its drawings, and it is looked at whenever the sheet does not bear the name
// that it had at the last look.
class DocumentSheet {
 public:
  DocumentSheet(Document& document, const Reference<css::sheet::XSpreadsheet>& uno,
                const Reference<css::drawing::XDrawPage>& page);

  Document& document() const { return document_; }

  // The sheet as it is now, good for this call alone. Error 1004 when it was deleted.
  const Reference<css::sheet::XSpreadsheet>& Get();
  const Reference<css::drawing::XDrawPage>& Page() const { return page_; }
  // Whether it was not deleted.
  bool IsThere();
  // Whether a drawing lies on it by itself, in no group of drawings. Error 1004 when the sheet was deleted.
  bool Holds(const Reference<css::drawing::XShape>& shape);

  std::string Name();
  // What Sheet::Name allows; error 1004 otherwise.
  void Rename(std::string_view name);
  // The place among the tabs, from 1.
  std::int32_t Index();
  bool IsHidden();

  bool IsProtected();

  // Whether this is the first time that any of these rows is written, which is noted.
  bool IsFirstWriteTo(std::int32_t first_row, std::int32_t last_row);
  // Whether a text of several lines was ever written to it.
  bool HasTallTexts() const { return has_tall_texts_; }
  void NoteTallText() { has_tall_texts_ = true; }

 private:
  // What tells at little cost, since it is asked for in front of each call, whether the office's object
  // stands for the same sheet, and for all of it.
  struct Mark {
    rtl::OUString name;
    css::table::CellRangeAddress cells;
    bool operator==(const Mark&) const = default;
  };

  // Nothing where the object stands for no cells any more: all its rows were taken out at once.
  std::optional<Mark> MarkNow() const;
  void Take(const Reference<css::sheet::XSpreadsheet>& uno);
  void LookUp();

  Document& document_;
  const Reference<css::drawing::XDrawPage> page_;
  Reference<css::sheet::XSpreadsheet> uno_;
  Reference<css::beans::XPropertySet> properties_;
  Reference<css::container::XNamed> named_;
  Reference<css::sheet::XCellRangeAddressable> addressed_;
  std::optional<Mark> mark_;  // of the last look
  std::string name_;
  std::int32_t first_written_ = 0;  // of the rows; 0 for none
  std::int32_t last_written_ = 0;
  bool has_tall_texts_ = false;
};

}  // namespace mirelo::calc
