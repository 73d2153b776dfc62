#pragma once

#include <com/sun/star/lang/Locale.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <com/sun/star/util/XNumberFormatTypes.hpp>
#include <com/sun/star/util/XNumberFormats.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/properties.h"
#include "spreadsheet/format_code.h"

namespace mirelo::calc {

// The number formats of a document. The office knows each by a key; codes here are in their United States
// form whatever the person's language is, and numbers are shown as they are written there.
class NumberFormats {
 public:
  struct Format {
    std::string code;  // as it was given where we gave it: the office writes some in another way
    spreadsheet::FormatKind kind;
    bool is_boolean;  // the office shows numbers as booleans by their format alone; the code is "General"
  };

  NumberFormats(const Reference<css::uno::XComponentContext>& context,
                const Reference<css::sheet::XSpreadsheetDocument>& document);

  // The key of a format code; nullopt for "General", which the office ignores where another format is set, so
  // that the property has to be reset instead. Error 1004 for a code that the office cannot read.
  std::optional<sal_Int32> KeyToSet(std::string_view code);
  // Gives cells this format.
  void Put(const Properties& cells, std::string_view code);
  sal_Int32 BooleanKey() const { return boolean_key_; }
  // Whether `text` is TRUE or FALSE in the person's language, without regard to case.
  bool IsNameOfBoolean(std::string_view text);
  const Format& Of(sal_Int32 key);

 private:
  sal_Int32 Key(std::string_view code);
  Format Read(sal_Int32 key) const;

  const Reference<css::uno::XComponentContext> context_;
  const Reference<css::util::XNumberFormats> formats_;
  const Reference<css::util::XNumberFormatTypes> types_;
  const css::lang::Locale of_codes_;
  const css::lang::Locale of_person_;  // empty, which stands for the one of the office
  const Reference<css::util::XNumberFormatsSupplier> supplier_;
  sal_Int32 boolean_key_;
  std::vector<std::string> names_of_booleans_;  // empty until they are asked for
  std::map<std::string, sal_Int32, std::less<>> keys_;
  std::map<sal_Int32, Format> by_key_;
};

}  // namespace mirelo::calc
