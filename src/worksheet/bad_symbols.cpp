// Texts without the characters that a sheet's name cannot bear.

#include <cstdint>
#include <string>

#include "automation/text.h"
#include "automation/variant.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "worksheet/cell_text.h"

namespace mirelo {

namespace {

void ReplaceEach(Frame& frame, const std::string& characters, Variant& text) {
  for (const std::int32_t i : frame.loop([&] { return Bounds{1, Len(characters)}; })) {
    STEP(text = Replace(TextOf(text), Mid(characters, i, 1), "_"));
  }
}

}  // namespace

Variant frmMirelo::remove_bad_symbols(Variant& text, const std::string& characters) {
  return Function<Variant>("Mirelo.frmMirelo.remove_bad_symbols", {}, [&](Frame& frame, Variant& cleaned) {
    ReplaceEach(frame, characters, text);
    STEP(cleaned = text);
    frame.pop();
  });
}

Variant frmMirelo::RemoveBadSymbols(Variant& text, const std::string& characters) {
  return Function<Variant>("Mirelo.frmMirelo.RemoveBadSymbols", {}, [&](Frame& frame, Variant& cleaned) {
    ReplaceEach(frame, characters, text);
    STEP(cleaned = text);
    frame.pop();
  });
}

}  // namespace mirelo
