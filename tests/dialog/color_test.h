#pragma once

#include <gmock/gmock.h>

#include "dialog/frmColor.h"
#include "support/facade_test.h"

namespace mirelo::testing {

// What the tests of the palette and of the buttons that open it look at.
class ColorTest : public FacadeTest {};

}  // namespace mirelo::testing
