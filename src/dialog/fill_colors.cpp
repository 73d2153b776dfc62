// The colours that mark the quote table as "on" and as "off": the palette that they are picked from, and the
// swatches that show them.

#include <cstdint>
#include <memory>
#include <string>

#include "automation/number.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/known_setting.h"
#include "diagnostics/routine.h"
#include "dialog/frmColor.h"
#include "dialog/frmMirelo.h"
#include "dialog/palette.h"
#include "host/desktop.h"
#include "host/host.h"

namespace mirelo {

struct frmMirelo::FillColor {
  const char* routine;
  DialogSetting setting;
  const char* suffix;
};

void frmMirelo::ButOn_Click() {
  PickFillColor({"Mirelo.frmMirelo.ButOn_Click", "FillColorON", " (On)"}, txtOn);
}

void frmMirelo::ButOff_Click() {
  PickFillColor({"Mirelo.frmMirelo.ButOff_Click", "FillColorOFF", " (Off)"}, txtOff);
}

// A pick is stored at once: it does not wait for Go, and Cancel does not take it back.
void frmMirelo::PickFillColor(const FillColor& fill, forms::Control& swatch) {
  const auto colors = [&]() -> frmColor& { return Referred(ListColors_.get()); };
  Routine(fill.routine, [&](Frame& frame) {
    STEP(ReloadOnActivate_ = false);
    STEP(ListColors_ = std::make_shared<frmColor>());
    STEP(colors().frmAppSettings(frmAppSettings_));
    STEP(colors().Tag(Setting(fill.setting).ToText()));
    STEP(colors().Caption(colors().Caption() + fill.suffix));
    STEP(host::Host::Current().desktop().ShowModal(colors()));
    if (frame.test([&] { return !colors().Tag().empty(); })) {
      STEP(backColorTxtFillColor(swatch, RoundToInt32(Val(colors().Tag()))));
      STEP(Store().SaveSetting(catalogue::kSettings, fill.setting.Key(), colors().Tag()));
    }
    STEP(colors().frmAppSettings(nullptr));
    STEP(ListColors_.reset());
    frame.pop();
  });
}

void frmMirelo::backColorTxtFillColor(forms::Control& control, std::int32_t color) {
  Routine("Mirelo.frmMirelo.backColorTxtFillColor", [&](Frame& frame) {
    if (frame.test([&] { return color != kNoFill; })) {
      STEP(control.BackColor(color));
    } else {
      STEP(control.BackColor(forms::kWindowBackground));
    }
    frame.pop();
  });
}

}  // namespace mirelo
