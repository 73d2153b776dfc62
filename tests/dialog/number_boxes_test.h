#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "dialog/dialog_test.h"

namespace mirelo::testing {

// A number box, its bar, and where a person finds them.
struct NumberBox {
  const char* name;
  forms::TextBox frmMirelo::*text;
  forms::ScrollBar frmMirelo::*bar;
  std::int32_t tab;
  std::int32_t highest;
  const char* shown;  // when the dialog opens
};

inline const std::array<NumberBox, 4> kNumberBoxes{{
    {"txtChartPoints", &frmMirelo::txtChartPoints, &frmMirelo::VScrollChartPoints, 2, 100, "20"},
    {"txtDecimalPlaces", &frmMirelo::txtDecimalPlaces, &frmMirelo::VScrollDecimalplaces, 1, 10, "2"},
    {"txtRows", &frmMirelo::txtRows, &frmMirelo::VScrollRows, 0, 3600, "20"},
    {"txtSec", &frmMirelo::txtSec, &frmMirelo::VScrollSec, 1, 3600, "60"},
}};

inline const ScriptedDesktop::Box kNoDigit{"The value must be a digit.", 16, "Dovanta2"};

// A person at the number boxes, all of which are on.
class NumberBoxesTest : public DialogTest {
 protected:
  NumberBoxesTest() { Save("BuildCharts", 1); }

  // Opens the dialog anew for each box and shows its tab.
  template <class Acts>
  void ShowEach(Acts acts) {
    for (const NumberBox& box : kNumberBoxes) {
      SCOPED_TRACE(box.name);
      mGlobal::ErrorHandler().CallStackClear();
      Show([&](frmMirelo& form) {
        form.C1TTickersSettings.UserSelect(box.tab);
        ASSERT_EQ((form.*box.text).Text(), box.shown);
        acts(form, box, form.*box.text, form.*box.bar);
      });
    }
  }
};

}  // namespace mirelo::testing
