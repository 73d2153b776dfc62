// Routines that are still to be built; this file goes when the last of them is.

#include "dialog/frmMirelo.h"

namespace mirelo {

bool frmMirelo::save_settings_and_create_table(bool) { return {}; }
void frmMirelo::LoadTickers(std::string&, std::string&) {}
std::string frmMirelo::RemoveBadSymbols(std::string& text, const std::string&) { return text; }
void frmMirelo::backColorTxtFillColor(forms::Control&, std::int32_t) {}
void frmMirelo::ButOn_Click() {}
void frmMirelo::ButOff_Click() {}
void frmMirelo::txtChartPoints_Change() {}
void frmMirelo::VScrollChartPoints_Change() {}
void frmMirelo::txtDecimalPlaces_Change() {}
void frmMirelo::VScrollDecimalplaces_Change() {}
void frmMirelo::txtRows_Change() {}
void frmMirelo::VScrollRows_Change() {}
void frmMirelo::txtSec_Change() {}
void frmMirelo::VScrollSec_Change() {}
void frmMirelo::txtVerticalSheet_Change() {}

}  // namespace mirelo
