#pragma once

#include <string>

#include "automation/variant.h"

namespace mirelo {

// Names of the tables' columns, and of the sheets that they stand on.
//
// Clients call these as members of frmMirelo, and failures are reported under its name. All are routine
// frames: a failure is reported by the error handler and never raised.
struct TableNames {
  // The part of a comma list that a vertical table can show, in its order.
  static std::string GiveListVerticFields(const std::string& list);
  // Whether a vertical table (the quote table) can have a column of that name, whatever its case.
  static bool CheckFieldForVerticalTable(const std::string& name);
  static bool CheckFieldHeaderTable(const std::string& name);
  // A comma list without empty entries and without repeats, which are found whatever their case; the first
  // spelling stays.
  static std::string NullDublicatForListRight(const std::string& list);

  // Both replace each of `characters` by "_", in place, and answer the text.
  static Variant RemoveBadSymbols(Variant& text, const std::string& characters);
  static Variant remove_bad_symbols(Variant& text,
                                    const std::string& characters = "=~@#$%^&*()-+\\/.,';`\"!:\\/?*[]");
};

}  // namespace mirelo
