// Routines that are still to be built; this file goes when the last of them is.

#include "dialog/frmMirelo.h"

namespace mirelo {

bool frmMirelo::save_settings_and_create_table(bool) { return {}; }
void frmMirelo::backColorTxtFillColor(forms::Control&, std::int32_t) {}
void frmMirelo::ButOn_Click() {}
void frmMirelo::ButOff_Click() {}

}  // namespace mirelo
