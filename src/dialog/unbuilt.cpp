// Routines that are still to be built; this file goes when the last of them is.

#include "dialog/frmMirelo.h"

namespace mirelo {

void frmMirelo::Build_Charts(const Variant&) {}

}  // namespace mirelo
