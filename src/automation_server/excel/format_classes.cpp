#include "automation_server/excel/tables.h"
#include "automation_server/rows.h"
#include "host/excel/border.h"
#include "host/excel/display_format.h"
#include "host/excel/font.h"
#include "host/excel/format_conditions.h"
#include "host/excel/interior.h"

namespace mirelo::automation_server::excel {

using host::excel::Border;
using host::excel::DisplayFormat;
using host::excel::Font;
using host::excel::FormatCondition;
using host::excel::FormatConditions;
using host::excel::Interior;

namespace {

Class FontClass() {
  using Self = Font;
  return HandedOut<Self>("Font", {GET_LET(Bold), GET_LET(Size), GET_LET(ColorIndex), GET(Color)});
}

Class InteriorClass() {
  using Self = Interior;
  return HandedOut<Self>("Interior",
                         {GET_LET(ColorIndex), GET(Color), GET_LET(PatternColorIndex), GET_LET(Pattern)});
}

Class BorderClass() {
  using Self = Border;
  return HandedOut<Self>("Border", {GET_LET(LineStyle), GET_LET(Weight), GET_LET(ColorIndex)});
}

Class FormatConditionClass() {
  using Self = FormatCondition;
  return HandedOut<Self>("FormatCondition", {GET(Operator), GET(Formula1), GET(Font)});
}

Class FormatConditionsClass() {
  using Self = FormatConditions;
  return HandedOut<Self>("FormatConditions", {
                                                 GET(Count),
                                                 DEFAULT_METHOD(Item, "Index"),
                                                 METHOD(Add, "Type", "Operator", "Formula1"),
                                                 METHOD(Delete),
                                                 NumberedItemsRow<Self>("_NewEnum"),
                                             });
}

Class DisplayFormatClass() {
  using Self = DisplayFormat;
  return HandedOut<Self>("DisplayFormat", {GET(Font), GET(Interior)});
}

}  // namespace

void AddFormatClasses(std::vector<Class>& classes) {
  classes.push_back(FontClass());
  classes.push_back(InteriorClass());
  classes.push_back(BorderClass());
  classes.push_back(FormatConditionClass());
  classes.push_back(FormatConditionsClass());
  classes.push_back(DisplayFormatClass());
}

}  // namespace mirelo::automation_server::excel
