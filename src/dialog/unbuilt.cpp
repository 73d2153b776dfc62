// Routines that are still to be built; this file goes when the last of them is.

#include "dialog/frmMirelo.h"

namespace mirelo {

bool frmMirelo::save_settings_and_create_table(bool) { return {}; }

}  // namespace mirelo
