#include "worksheet/table_names.h"

#include <cstdint>
#include <string>
#include <vector>

#include "automation/text.h"
#include "automation/variant.h"
#include "diagnostics/routine.h"
#include "snapshot/column_vocabulary.h"
#include "worksheet/cell_text.h"
#include "worksheet/comma_list.h"

namespace mirelo {

namespace {

bool IsKnown(const std::string& name) { return FindColumn(UCase(name)) != nullptr; }

bool FitsVerticalTable(const std::string& name) {
  const ColumnRow* const column = FindColumn(UCase(name));
  return column != nullptr && column->in_histories == kInHistories;
}

Bounds BoundsOf(const std::vector<std::string>& names) {
  return {0, static_cast<std::int32_t>(names.size()) - 1};
}

void ReplaceEach(Frame& frame, const std::string& characters, Variant& text) {
  for (const std::int32_t i : frame.loop([&] { return Bounds{1, Len(characters)}; })) {
    STEP(text = Replace(TextOf(text), Mid(characters, i, 1), "_"));
  }
}

}  // namespace

bool TableNames::CheckFieldForVerticalTable(const std::string& name) {
  return Function("Mirelo.frmMirelo.CheckFieldForVerticalTable", false, [&](Frame& frame, bool& fits) {
    STEP(fits = FitsVerticalTable(name));
    frame.pop();
  });
}

bool TableNames::CheckFieldHeaderTable(const std::string& name) {
  return Function("Mirelo.frmMirelo.CheckFieldHeaderTable", false, [&](Frame& frame, bool& known) {
    STEP(known = IsKnown(name));
    frame.pop();
  });
}

std::string TableNames::GiveListVerticFields(const std::string& list) {
  return Function<std::string>("Mirelo.frmMirelo.GiveListVerticFields", {},
                               [&](Frame& frame, std::string& fields) {
                                 std::vector<std::string> names;
                                 STEP(names = Split(list, ","));
                                 for (const std::int32_t i : frame.loop([&] { return BoundsOf(names); })) {
                                   const std::string& name = names[static_cast<std::size_t>(i)];
                                   if (frame.test([&] { return CheckFieldForVerticalTable(name); })) {
                                     STEP(AppendName(fields, name));
                                   }
                                 }
                                 STEP(CutLastComma(fields));
                                 frame.pop();
                               });
}

std::string TableNames::NullDublicatForListRight(const std::string& list) {
  return Function<std::string>("Mirelo.frmMirelo.NullDublicatForListRight", {},
                               [&](Frame& frame, std::string& result) {
                                 std::vector<std::string> names;
                                 STEP(names = Split(list, ","));
                                 for (auto name = names.begin(); name != names.end(); ++name) {
                                   if (name->empty()) continue;
                                   for (auto later = name + 1; later != names.end(); ++later) {
                                     if (frame.test([&] { return EqualText(*name, *later); }))
                                       STEP(later->clear());
                                   }
                                 }
                                 for (const std::string& name : names) {
                                   if (!name.empty()) STEP(AppendName(result, name));
                                 }
                                 STEP(CutLastComma(result));
                                 frame.pop();
                               });
}

Variant TableNames::remove_bad_symbols(Variant& text, const std::string& characters) {
  return Function<Variant>("Mirelo.frmMirelo.remove_bad_symbols", {}, [&](Frame& frame, Variant& cleaned) {
    ReplaceEach(frame, characters, text);
    STEP(cleaned = text);
    frame.pop();
  });
}

Variant TableNames::RemoveBadSymbols(Variant& text, const std::string& characters) {
  return Function<Variant>("Mirelo.frmMirelo.RemoveBadSymbols", {}, [&](Frame& frame, Variant& cleaned) {
    ReplaceEach(frame, characters, text);
    STEP(cleaned = text);
    frame.pop();
  });
}

}  // namespace mirelo
