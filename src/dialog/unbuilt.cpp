// Routines that are still to be built; this file goes when the last of them is.

#include "dialog/frmMirelo.h"

namespace mirelo {

bool frmMirelo::CreateQuoteTable(Frame&, const std::vector<std::string>&, const std::string&) { return true; }

}  // namespace mirelo
