#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "forms/form.h"
#include "forms/simple_controls.h"

namespace mirelo {

class CAppSettings;
class CFormRestore;

// The palette from which a fill colour is picked. Set frmAppSettings and the Tag (the present colour as a
// decimal number, "-4142" for none), show it modally, and read the Tag: the pick in the same form, empty when
// nothing was picked.
class frmColor : public forms::Form {
 public:
  static constexpr std::size_t kCells = 41;

  frmColor();
  ~frmColor() override;

  // Null until it is set; must outlive the form or be unset first.
  CAppSettings* frmAppSettings() const { return frmAppSettings_; }
  void frmAppSettings(CAppSettings* settings) { frmAppSettings_ = settings; }

  void Form_Load() override;
  void Form_Activate() override;
  void Form_Unload() override;

  forms::Panel C1ElasticColor{*this, "C1ElasticColor", nullptr};
  // Cell 0 stands for no colour; 1 to 40 are the palette, column after column of five. Each is named
  // "L1(index)".
  std::array<std::unique_ptr<forms::Label>, kCells> L1;

  // What a cancel action would run: empties the Tag and hides the form. No control raises it.
  void cmdEsc_Click();

 private:
  void L1_Click(std::int32_t index);
  // Saves the window's place, once.
  void SaveParameters();
  forms::Label& Cell(std::int32_t index);

  CAppSettings* frmAppSettings_ = nullptr;
  std::unique_ptr<CFormRestore> Placement_;  // until the place is saved
};

}  // namespace mirelo
