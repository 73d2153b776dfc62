#include "dialog/frmColor.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "automation/number.h"
#include "automation/runtime_error.h"
#include "diagnostics/CFormRestore.h"
#include "diagnostics/routine.h"
#include "dialog/palette.h"

namespace mirelo {

namespace {

constexpr int kSingleBorder = 1;
constexpr std::int32_t kLastCell = frmColor::kCells - 1;

static_assert(kPalette.size() == kLastCell);

}  // namespace

frmColor::frmColor() : Form("frmColor", "Fill Color") {
  Design(3600, 2700, Border::FixedDialog);
  for (std::size_t i = 0; i < kCells; ++i) {
    L1[i] = std::make_unique<forms::Label>(*this, "L1(" + std::to_string(i) + ")", &C1ElasticColor);
    L1[i]->Click.Subscribe([this, i] { L1_Click(static_cast<std::int32_t>(i)); });
  }
  L1[0]->Caption("No Fill");
  L1[0]->ToolTipText("No Fill");
  L1[0]->BackColor(forms::kWindowBackground);
  for (std::size_t i = 1; i < kCells; ++i) {
    L1[i]->ToolTipText(std::string(kPalette[i - 1].name));
    L1[i]->BackColor(kPalette[i - 1].color);
  }
}

frmColor::~frmColor() = default;

void frmColor::Form_Load() {
  Routine("Mirelo.frmColor.Form_Load", [&](Frame& frame) {
    STEP(Placement_ = std::make_unique<CFormRestore>());
    STEP(Referred(Placement_.get()).Init(frmAppSettings_, true));
    STEP(Referred(Placement_.get()).GetPosition(*this));
    frame.pop();
  });
}

void frmColor::Form_Activate() {
  Routine("Mirelo.frmColor.Form_Activate", [&](Frame& frame) {
    if (frame.test([&] { return Tag() != kNoFillTag; })) {
      for (const std::int32_t i : frame.loop([&] { return Bounds{1, kLastCell}; })) {
        if (frame.test([&] { return Cell(i).BackColor() == Val(Tag()); })) {
          STEP(Cell(i).BorderStyle(kSingleBorder));
        }
      }
    } else {
      STEP(Cell(0).BorderStyle(kSingleBorder));
    }
    frame.pop();
  });
}

void frmColor::L1_Click(std::int32_t index) {
  Routine("Mirelo.frmColor.L1_Click", [&](Frame& frame) {
    if (frame.test([&] { return index != 0; })) {
      STEP(Tag(NumberText(Cell(index).BackColor())));
    } else {
      STEP(Tag(kNoFillTag));
    }
    STEP(SaveParameters());
    STEP(Hide());
    frame.pop();
  });
}

void frmColor::cmdEsc_Click() {
  Routine("Mirelo.frmColor.cmdEsc_Click", [&](Frame& frame) {
    STEP(Tag(""));
    STEP(Hide());
    frame.pop();
  });
}

void frmColor::Form_Unload() {
  Routine("Mirelo.frmColor.Form_Unload", [&](Frame& frame) {
    STEP(SaveParameters());
    frame.pop();
  });
}

void frmColor::SaveParameters() {
  Routine("Mirelo.frmColor.SaveParameters", [&](Frame& frame) {
    if (frame.test([&] { return Placement_ != nullptr; })) {
      STEP(Referred(Placement_.get()).SavePosition(*this));
      STEP(Placement_.reset());
    }
    frame.pop();
  });
}

forms::Label& frmColor::Cell(std::int32_t index) { return *L1.at(static_cast<std::size_t>(index)); }

}  // namespace mirelo
