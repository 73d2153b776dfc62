#include <cstdint>
#include <string>
#include <vector>

#include "automation/text.h"
#include "core/cMirelo.h"
#include "core/known_setting.h"
#include "core/mGlobal.h"
#include "diagnostics/routine.h"
#include "snapshot/column_vocabulary.h"

namespace mirelo {

void cMirelo::LoadMasPosition() {
  Routine("Mirelo.cMirelo.LoadMasPosition", [&](Frame& frame) {
    std::string list;
    STEP(list = FacadeSetting("ListRight").In(mGlobal::AppSettings()).ToText());
    if (list.empty()) return frame.pop();

    VariantArray names;
    STEP(names = VariantArray::OfTexts(Split(list, ",")));
    STEP(mas_position_.ReDim(names.LBound() + 1, names.UBound() + 1));
    for (const std::int32_t c : frame.loop([&] {
           return Bounds{mas_position_.LBound(), mas_position_.UBound()};
         })) {
      STEP(mas_position_(c) = ColumnCode(UCase(names(c - 1).ToText())));
    }
    frame.pop();
  });
}

}  // namespace mirelo
