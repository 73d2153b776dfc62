#pragma once

#include <com/sun/star/lang/Locale.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/util/XNumberFormatTypes.hpp>
#include <com/sun/star/util/XNumberFormats.hpp>
#include <map>
#include <string>
#include <string_view>

#include "adapters/calc/objects/interfaces.h"
#include "spreadsheet/format_code.h"

namespace mirelo::calc {

// The number formats of a document. The office knows each by a key; codes here are in their United States
// form whatever the document's language is.
class NumberFormats {
 public:
  struct Format {
    std::string code;  // as it was given where we gave it: the office writes some in another way
    spreadsheet::FormatKind kind;
    bool is_boolean;  // the office shows numbers as booleans by their format alone; the code is "General"
  };

  explicit NumberFormats(const Reference<css::sheet::XSpreadsheetDocument>& document);

  // Error 1004 for a code that the office cannot read.
  sal_Int32 Key(std::string_view code);
  sal_Int32 BooleanKey() const { return boolean_key_; }
  const Format& Of(sal_Int32 key);

 private:
  Format Read(sal_Int32 key) const;

  const Reference<css::util::XNumberFormats> formats_;
  const Reference<css::util::XNumberFormatTypes> types_;
  const css::lang::Locale locale_;
  sal_Int32 boolean_key_;
  std::map<std::string, sal_Int32, std::less<>> keys_;
  std::map<sal_Int32, Format> by_key_;
};

}  // namespace mirelo::calc
