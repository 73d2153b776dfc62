#include <cstdint>
#include <string>

#include "automation/text.h"
#include "automation/variant.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "worksheet/cell_text.h"

namespace mirelo {

Variant frmMirelo::remove_bad_symbols(Variant& text, const std::string& characters) {
  return Function<Variant>("Mirelo.frmMirelo.remove_bad_symbols", {}, [&](Frame& frame, Variant& cleaned) {
    for (const std::int32_t i : frame.loop([&] { return Bounds{1, Len(characters)}; })) {
      STEP(text = Replace(TextOf(text), Mid(characters, i, 1), "_"));
    }
    STEP(cleaned = text);
    frame.pop();
  });
}

}  // namespace mirelo
