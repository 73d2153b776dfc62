#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "forms/control.h"
#include "forms/form.h"
#include "support/error_number.h"

namespace mirelo::testing {

// A form to put controls on, and a list of what they raised.
class ControlTest : public ::testing::Test {
 protected:
  template <class Raised>
  void Watch(Raised& event, const std::string& name) {
    event.Subscribe([this, name] { raised.push_back(name); });
  }

  forms::Form form{"frmTest", "Test"};
  std::vector<std::string> raised;
};

}  // namespace mirelo::testing
